#include <display/StateFile.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

namespace {

constexpr qint64 leastToRewrite = 1'048'576; // 1 MiB
constexpr qint64 growth = 4;                 // before the file is rewritten

QByteArray lineOf(const KeptMessage &message)
{
    return QJsonDocument(message.toJson()).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

StateFile::StateFile(const QString &fileName) : m_file(fileName)
{
    if (fileName.isEmpty())
        return;
    QDir().mkpath(QFileInfo(fileName).absolutePath());
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Append))
        giveUp(m_file.errorString());
}

LastMessages StateFile::read()
{
    LastMessages messages;
    if (!m_file.isOpen())
        return messages;
    m_file.seek(0);
    while (!m_file.atEnd()) {
        const auto message =
            KeptMessage::fromJson(QJsonDocument::fromJson(m_file.readLine()).object());
        if (!message.type.isEmpty())
            messages.keep(message);
    }
    rewrite(messages); // also ends a torn line
    return messages;
}

void StateFile::add(const KeptMessage &message, const LastMessages &messages)
{
    if (!m_file.isOpen())
        return;
    append(lineOf(message));
    if (m_size > leastToRewrite && m_size > growth * m_rewrittenSize)
        rewrite(messages);
}

void StateFile::rewrite(const LastMessages &messages)
{
    if (!m_file.isOpen())
        return;
    QSaveFile fresh(m_file.fileName());
    fresh.setDirectWriteFallback(true); // the folder may be somebody else's
    if (fresh.open(QIODevice::WriteOnly)) {
        for (const auto &message : messages.all())
            fresh.write(lineOf(message));
    }
    m_file.close();
    if (!fresh.commit()) {
        giveUp(fresh.errorString());
        return;
    }
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Append)) {
        giveUp(m_file.errorString());
        return;
    }
    m_size = m_rewrittenSize = m_file.size();
}

void StateFile::append(const QByteArray &line)
{
    if (m_file.write(line) != line.size() || !m_file.flush()) {
        giveUp(m_file.errorString());
        QFile::resize(m_file.fileName(), 0); // no state is better than an old one
        return;
    }
    m_size += line.size();
}

void StateFile::giveUp(const QString &reason)
{
    m_file.close();
    Log4Qt::LogManager::logger(QStringLiteral("display"))
        ->warn(
            QStringLiteral("the last state is not kept: %1: %2. Choose another file with --state")
                .arg(m_file.fileName(), reason));
}
