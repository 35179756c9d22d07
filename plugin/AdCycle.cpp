// Advertisements, one after the other, driven by the display's results: there is no timer here.

#include <plugin/AdEntry.h>
#include <plugin/ViewConnector.h>

#include <log4qt/logger.h>

#include <QUrl>

namespace {

bool isStream(const QVariant &entry)
{
    return entry.toMap().value(AdEntry::url).toUrl().scheme() == u"ads";
}

} // namespace

void ViewConnector::sendAdvertising()
{
    logger->debug(QStringLiteral("Отправляем рекламу"));
    if (adTimetable.isEmpty())
        return;
    if (currentAd >= adTimetable.size())
        currentAd = 0;
    addMessage({view::Message::Type::ShowAd, adTimetable.at(currentAd).toMap()});
}

void ViewConnector::processAdResult(const QJsonObject &result)
{
    if (adTimetable.isEmpty())
        return;

    if (result.value(QStringLiteral("value")).toBool()) {
        ++currentAd;
    } else if (currentAd < adTimetable.size()) {
        const QVariant failed = adTimetable.takeAt(currentAd);
        if (isStream(failed) && adTimetable.isEmpty()) {
            adTimetable = readAdTimetable();
            currentAd = 0;
        }
    }
    sendAdvertising();
}
