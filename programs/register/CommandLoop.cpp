#include <register/CommandLoop.h>

#include <common/JsonLine.h>
#include <register/CommandError.h>
#include <register/CommandFields.h>

#include <QJsonDocument>
#include <QJsonParseError>
#include <QTimer>

#include <cstdio>
#include <utility>

CommandLoop::CommandLoop(const Commands &commands, const QString &fileName)
    : m_commands(commands), m_reader(fileName)
{
    connect(&m_reader, &LineReader::changed, this, &CommandLoop::runNext);
}

void CommandLoop::runNext()
{
    if (m_waiting || m_finished)
        return;
    const auto line = m_reader.takeLine();
    if (line && !line->trimmed().isEmpty())
        runLine(*line);

    if (m_quit || (!line && m_reader.isAtEnd())) {
        m_finished = true;
        Q_EMIT finished(m_quit);
    } else if (line) {
        m_waiting = true;
        QTimer::singleShot(std::exchange(m_waitMs, 0), Qt::PreciseTimer, this, [this] {
            m_waiting = false;
            runNext();
        });
    }
}

void CommandLoop::runLine(const QByteArray &line)
{
    ++m_number;
    QString name;
    try {
        QJsonParseError error{};
        const auto document = QJsonDocument::fromJson(line, &error);
        if (!document.isObject())
            throw CommandError(error.error == QJsonParseError::NoError
                                   ? QStringLiteral("the line is no JSON object")
                                   : QStringLiteral("the line is no JSON: %1 at byte %2")
                                         .arg(error.errorString())
                                         .arg(error.offset));
        const auto command = document.object();
        name = command.value(u"do").toString();
        runCommand(command);
        print(name, {});
    } catch (const CommandError &error) {
        m_failed = true;
        print(name, QString::fromUtf8(error.what()));
    }
}

void CommandLoop::runCommand(const QJsonObject &command)
{
    const auto name = command.value(u"do").toString();
    if (name == u"quit") {
        m_quit = true;
    } else if (name == u"wait") {
        const int ms = CommandFields(command).integer(QStringLiteral("ms"));
        if (ms < 0)
            throw CommandError(QStringLiteral("\"ms\" must not be below 0"));
        m_waitMs = ms;
    } else {
        m_commands.run(command);
    }
}

void CommandLoop::print(const QString &name, const QString &error) const
{
    const auto nKey = QStringLiteral("n");
    const auto doKey = QStringLiteral("do");
    const auto okKey = QStringLiteral("ok");
    const QByteArray line = error.isEmpty()
                                ? jsonLine({{nKey, m_number}, {doKey, name}, {okKey, true}})
                                : jsonLine({{nKey, m_number},
                                            {doKey, name},
                                            {okKey, false},
                                            {QStringLiteral("error"), error}});
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}
