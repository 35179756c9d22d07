#pragma once

#include <ActionTrigger.h>
#include <HostExport.h>

#include <QList>

/**
 * Base of every plug-in: its start, its end and its action triggers.
 *
 * Owner: the plug-in loader of the host.
 * Thread: the host's main thread.
 * Shut-down: `deinit` takes the triggers out; the plug-in may be started again with `init`.
 */
class HOST_EXPORT BasicPlugin
{
public:
    BasicPlugin() = default;
    virtual ~BasicPlugin();
    Q_DISABLE_COPY_MOVE(BasicPlugin)

    /// Starts the plug-in; false if it cannot work.
    virtual bool init() = 0;
    /// Ends the plug-in's work and drops its triggers.
    virtual bool deinit();

    QList<ActionTrigger> triggers() const { return m_triggers; }

protected:
    void addTrigger(const ActionTrigger &trigger);

private:
    QList<ActionTrigger> m_triggers;
};
