#include <replay/RecordingReader.h>

#include <common/MessageTypes.h>
#include <common/UsageError.h>

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>

namespace {

/// Whether a line tells something else than what a register posts.
bool isOther(const QJsonObject &record)
{
    return record[u"kind"].toString(QStringLiteral("message")) != u"message" ||
           record[u"to"].toString(QStringLiteral("display")) != u"display";
}

bool isAccepted(const QJsonObject &record)
{
    constexpr int ok = 200;
    const int status = record[u"status"].toInt(ok);
    return status >= ok && status < 300;
}

bool isPost(const QJsonObject &record)
{
    return record[u"method"].toString(QStringLiteral("POST")) == u"POST";
}

} // namespace

RecordingReader::RecordingReader(const QString &fileName) : m_file(fileName)
{
    // Read twice: before anything is sent, and to send it.
    if (QFileInfo(fileName).exists() && !QFileInfo(fileName).isFile())
        throw UsageError(QStringLiteral("--recording %1 is no file: give one.").arg(fileName));
    if (!m_file.open(QIODevice::ReadOnly))
        throw UsageError(QStringLiteral("--recording %1: %2.").arg(fileName, m_file.errorString()));
}

std::optional<RecordedMessage> RecordingReader::next()
{
    while (!m_file.atEnd()) {
        const auto line = m_file.readLine(maxLineBytes + 1);
        ++m_line;
        if (line.size() > maxLineBytes || (line.size() == maxLineBytes && !line.endsWith('\n')))
            fail(QStringLiteral("longer than %1 bytes").arg(maxLineBytes));
        if (line.trimmed().isEmpty())
            continue;
        if (auto message = read(line))
            return message;
    }
    return std::nullopt;
}

std::optional<RecordedMessage> RecordingReader::read(const QByteArray &line)
{
    QJsonParseError error{};
    const auto document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError)
        fail(QStringLiteral("not JSON: %1 at byte %2").arg(error.errorString()).arg(error.offset));
    if (!document.isObject())
        fail(QStringLiteral("not a JSON object"));
    const auto record = document.object();
    if (isOther(record))
        return std::nullopt;
    if (!record[u"path"].isString())
        fail(QStringLiteral("\"path\" is missing"));
    const auto path = record[u"path"].toString();
    const auto type = messageTypeOfPath(path.section(u'?', 0, 0));
    if (type.isEmpty() || !isPost(record) || !isAccepted(record)) {
        ++m_passedOver;
        return std::nullopt;
    }
    if (!record[u"body"].isObject())
        fail(QStringLiteral("\"body\" is no JSON object"));
    if (record[u"ms"].toDouble(-1) < 0)
        fail(QStringLiteral("\"ms\" is no time"));
    return RecordedMessage{
        m_line, record[u"ms"].toDouble(), type, path.toUtf8(),
        QJsonDocument(record[u"body"].toObject()).toJson(QJsonDocument::Compact)};
}

void RecordingReader::fail(const QString &problem) const
{
    throw UsageError(QStringLiteral("--recording %1:%2: %3. Give a recording of a register's "
                                    "messages.")
                         .arg(m_file.fileName())
                         .arg(m_line)
                         .arg(problem));
}
