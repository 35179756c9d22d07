#pragma once

#include <support/FreshSingletons.h>
#include <support/LogCapture.h>
#include <support/ScriptedServer.h>

#include <AbstractDocument.h>
#include <Action.h>
#include <ActionRunner.h>
#include <PluginLoader.h>

#include <QSharedPointer>

/**
 * The plug-in, loaded and started as a host does, with a timetable of three advertisements. Its
 * client has posted the first message, and pauses until long after this program has ended: what
 * comes then waits in the queue.
 *
 * Thread: the main thread.
 * Errors: the constructor throws PluginError.
 */
class RunningPlugin
{
public:
    explicit RunningPlugin(const QString &file);
    ~RunningPlugin();
    Q_DISABLE_COPY_MOVE(RunningPlugin)

    void setDocument(const QSharedPointer<AbstractDocument> &document);
    void run(const control::Action &action) const { m_runner.run(action); }

    /// The port that it answers the display on.
    int port() const { return m_port; }

    /// Returns when the client has dealt with all that it was told so far.
    void settle() const;

private:
    support::LogCapture m_log;
    support::FreshSingletons m_singletons;
    support::ScriptedServer m_display;
    PluginLoader m_loader;
    ActionRunner m_runner;
    int m_port = 0;
};
