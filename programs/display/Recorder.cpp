#include <display/Recorder.h>

#include <common/JsonLine.h>
#include <common/UsageError.h>

#include <cmath>

namespace {

/// Microseconds are enough, and keep the line readable.
double rounded(double milliseconds)
{
    return std::round(milliseconds * 1000) / 1000;
}

} // namespace

Recorder::Recorder(const QString &fileName) : m_file(fileName)
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw UsageError(QStringLiteral("--record %1: %2.").arg(fileName, m_file.errorString()));
}

void Recorder::write(int number, double sinceStartMs, double arrivalMs, const QString &path,
                     const ReceivedMessage &message)
{
    const bool hasBody = message.refusal.isEmpty();
    m_file.write(
        jsonLine({{QStringLiteral("n"), number},
                  {QStringLiteral("ms"), rounded(sinceStartMs)},
                  {QStringLiteral("path"), path},
                  {QStringLiteral("body"), hasBody ? QJsonValue(message.body) : QJsonValue()},
                  {QStringLiteral("status"), message.status},
                  {QStringLiteral("monotonicMs"), rounded(arrivalMs)}}));
    m_file.flush();
}
