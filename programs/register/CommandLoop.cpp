#include <register/CommandLoop.h>

#include <QTimer>

#include <utility>

CommandLoop::CommandLoop(CommandRunner &runner, const QString &fileName)
    : m_runner(runner), m_reader(fileName)
{
    connect(&m_reader, &LineReader::changed, this, &CommandLoop::runNext);
    connect(&m_runner, &CommandRunner::quitRequested, this, [this] { m_quit = true; });
    connect(&m_runner, &CommandRunner::waitRequested, this,
            [this](int ms, CommandRunner::Source source) {
                if (source == CommandRunner::Source::Script)
                    m_waitMs = ms;
            });
}

void CommandLoop::runNext()
{
    if (m_waiting || m_finished)
        return;
    const auto line = m_quit ? std::nullopt : m_reader.takeLine();
    if (line && !line->trimmed().isEmpty())
        m_runner.run(*line, CommandRunner::Source::Script);

    if (m_quit || (!line && m_reader.isAtEnd())) {
        m_finished = true;
        Q_EMIT finished();
    } else if (line) {
        m_waiting = true;
        QTimer::singleShot(std::exchange(m_waitMs, 0), Qt::PreciseTimer, this, [this] {
            m_waiting = false;
            runNext();
        });
    }
}
