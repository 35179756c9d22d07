#pragma once

#include <Action.h>
#include <HostExport.h>

#include <QList>

class BasicPlugin;

/**
 * Runs the triggers that plug-ins registered for an action.
 *
 * Owner: the host; it does not own the plug-ins, and a plug-in is taken out before it is destroyed.
 * Thread: the host's main thread only.
 * Errors: what a handler throws reaches the caller of `run`.
 */
class HOST_EXPORT ActionRunner
{
public:
    void addPlugin(const BasicPlugin *plugin);
    void removePlugin(const BasicPlugin *plugin);

    /// Runs each matching trigger once, in ascending priority, until a handler answers anything but
    /// EContext::Continue. Returns how many ran.
    int run(const control::Action &action) const;

private:
    QList<const BasicPlugin *> m_plugins;
};
