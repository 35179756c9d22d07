#include <support/LogCapture.h>

#include <Locker.h>

#include <mutex>

namespace support {

namespace {

Locker<QList<LogCapture::Line>, std::mutex> &captured()
{
    static auto &only = *new Locker<QList<LogCapture::Line>, std::mutex>;
    return only;
}

void capture(QtMsgType level, const QMessageLogContext &context, const QString &text)
{
    captured().lock()->append({level, QString::fromUtf8(context.category), text});
}

} // namespace

LogCapture::LogCapture()
{
    captured().lock()->clear();
    m_previous = qInstallMessageHandler(&capture);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_previous);
}

QList<LogCapture::Line> LogCapture::lines() const
{
    return *captured().lock();
}

QStringList LogCapture::textsOf(const QString &logger) const
{
    QStringList texts;
    for (const auto &line : lines()) {
        if (line.logger == logger)
            texts.append(line.text);
    }
    return texts;
}

} // namespace support
