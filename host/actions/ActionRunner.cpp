#include <ActionRunner.h>

#include <BasicPlugin.h>

#include <algorithm>
#include <iterator>

void ActionRunner::addPlugin(const BasicPlugin *plugin)
{
    m_plugins.append(plugin);
}

void ActionRunner::removePlugin(const BasicPlugin *plugin)
{
    m_plugins.removeAll(plugin);
}

int ActionRunner::run(const control::Action &action) const
{
    // Copied first: a handler may add triggers or end its plug-in.
    QList<ActionTrigger> matching;
    for (const auto *plugin : m_plugins) {
        const auto triggers = plugin->triggers();
        std::copy_if(triggers.cbegin(), triggers.cend(), std::back_inserter(matching),
                     [&](const ActionTrigger &trigger) { return trigger.matches(action); });
    }
    std::stable_sort(
        matching.begin(), matching.end(),
        [](const ActionTrigger &a, const ActionTrigger &b) { return a.priority() < b.priority(); });

    int ran = 0;
    for (const auto &trigger : std::as_const(matching)) {
        ++ran;
        if (trigger.run(action) != EContext::Continue)
            break;
    }
    return ran;
}
