#pragma once

#include <record/RecordOptions.h>
#include <record/RecordingFile.h>

#include <relay/Relay.h>

#include <QObject>

#include <optional>

/**
 * Stands between a plug-in and a display in both directions, and writes down what passes, each
 * exchange when it is over and before the side that asked has its answer.
 *
 * Owner: main. Thread: the main thread.
 * Errors: the constructor throws UsageError if the recording cannot be written; `failedOption`
 * tells which port could not be bound. A recording that cannot be written any more stops nothing
 * else. Shut-down: the destructor closes all connections; what is under way is not written.
 */
class WireRecorder : public QObject
{
    Q_OBJECT

public:
    explicit WireRecorder(const RecordOptions &options);

    bool isListening() const { return m_toDisplay.isListening() && m_toPlugin.isListening(); }
    /// The option with the port that could not be bound, if there is one, and why.
    QString failedOption() const;
    QString errorString() const;

    /// Where the plug-in has to post, and where the display has to ask.
    int port() const { return m_toDisplay.port(); }
    int pluginPort() const { return m_toPlugin.port(); }

    /// How many exchanges are over.
    int messages() const { return m_messages; }
    int requests() const { return m_requests; }
    /// Whether all of it was written.
    bool isComplete() const { return m_file && !m_file->hasFailed(); }

private:
    void write(bool isToDisplay, const Exchange &exchange);

    const RecordOptions m_options;
    const double m_startedMs;
    Relay m_toDisplay;
    Relay m_toPlugin;
    std::optional<RecordingFile> m_file; // there once the ports are ours
    int m_messages = 0;
    int m_requests = 0;
};
