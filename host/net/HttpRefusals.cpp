#include "HttpRefusals.h"

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QUrl>

namespace {

constexpr int shownPathLength = 100;

/// What came from outside must neither break nor colour a line of the log.
QString printable(const QString &path)
{
    return QString::fromLatin1(
        QUrl::toPercentEncoding(path.left(shownPathLength), "/?&=:%*+,;@!$'()"));
}

} // namespace

void HttpRefusals::note(Kind kind, const QString &what, Clock::time_point now)
{
    auto &series = m_series.at(static_cast<std::size_t>(kind));
    if (now < series.nextLine) {
        ++series.leftOut;
        return;
    }
    auto line = QStringLiteral("HTTP-сервер: ") + what;
    if (series.leftOut > 0)
        line += QStringLiteral("; не записано таких же: %1").arg(series.leftOut);
    series = {now + pause, 0};
    Log4Qt::LogManager::logger(QStringLiteral("httpserver"))->warn(line);
}

void HttpRefusals::noteRequest(Kind kind, const QString &path, const QString &why)
{
    note(kind, QStringLiteral("запрос %1 отклонён: %2").arg(printable(path), why));
}
