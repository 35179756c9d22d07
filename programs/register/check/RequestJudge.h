#pragma once

#include <register/check/AdJudge.h>
#include <register/check/CheckResult.h>
#include <register/check/CheckShop.h>

#include <contract/Contract.h>

#include <QByteArray>
#include <QMap>
#include <QStringList>

/**
 * Judges the requests of a display under test: whether they keep to the contract, and what comes of
 * its advertisements.
 *
 * Owner: the check. Thread: the main thread. Errors: they are the results.
 */
class RequestJudge
{
public:
    /// A request of the display's arrived, at this time of the monotonic clock.
    void take(const QByteArray &body, double atMs);
    /// An advertisement was posted to the display.
    void takeAdvertisement(const Post &post) { m_ads.takePost(post); }

    bool advertisingRunsAway() const { return m_ads.runsAway(); }
    /// Whether each advertisement of the check has been reported.
    bool hasAllReports() const { return m_ads.reports() >= CheckShop::ads; }

    /// `port` is where the requests were expected.
    CheckResults results(int port) const;

private:
    CheckResult ofPictures(const QString &address) const;
    CheckResult ofAdvertisements(const QString &address) const;
    CheckResult ofOthers() const;

    const Contract m_contract;
    AdJudge m_ads;
    QMap<QString, int> m_counts;           // by the request's name
    QMap<QString, QStringList> m_problems; // of these; of others, under an empty name
};
