#include <register/CommandRunner.h>

#include <register/CommandError.h>
#include <register/CommandFields.h>

#include <QJsonDocument>
#include <QJsonParseError>

#include <cstdio>

namespace {

QJsonObject parse(const QByteArray &text)
{
    QJsonParseError error{};
    const auto document = QJsonDocument::fromJson(text, &error);
    if (!document.isObject())
        throw CommandError(error.error == QJsonParseError::NoError
                               ? QStringLiteral("the line is no JSON object")
                               : QStringLiteral("the line is no JSON: %1 at byte %2")
                                     .arg(error.errorString())
                                     .arg(error.offset));
    return document.object();
}

void print(const CommandAnswer &answer)
{
    const auto line = answer.toLine();
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

} // namespace

CommandAnswer CommandRunner::run(const QByteArray &text, Source source)
{
    CommandAnswer answer;
    answer.number = ++m_number;
    try {
        const auto command = parse(text);
        answer.name = command.value(u"do").toString();
        runCommand(command, source);
    } catch (const CommandError &error) {
        answer.error = QString::fromUtf8(error.what());
        m_failed = true;
    }
    print(answer);
    Q_EMIT answered(text, answer, source);
    return answer;
}

void CommandRunner::runCommand(const QJsonObject &command, Source source)
{
    const auto name = command.value(u"do").toString();
    if (name == u"quit") {
        Q_EMIT quitRequested();
    } else if (name == u"wait") {
        const int ms = CommandFields(command).integer(QStringLiteral("ms"));
        if (ms < 0)
            throw CommandError(QStringLiteral("\"ms\" must not be below 0"));
        Q_EMIT waitRequested(ms, source);
    } else {
        m_commands.run(command);
    }
}
