#include <BasicPlugin.h>

BasicPlugin::~BasicPlugin() = default;

bool BasicPlugin::deinit()
{
    m_triggers.clear();
    return true;
}

void BasicPlugin::addTrigger(const ActionTrigger &trigger)
{
    m_triggers.append(trigger);
}
