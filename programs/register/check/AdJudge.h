#pragma once

#include <register/check/CheckResult.h>
#include <register/check/Post.h>

#include <QList>
#include <QString>

/**
 * Judges how a display under test reports its advertisements: one result for each, when it has been
 * shown or turned out not to be there, and never before the message was answered.
 *
 * Owner: the check. Thread: the main thread. Errors: they are the result.
 */
class AdJudge
{
public:
    /// An advertisement was posted.
    void takePost(const Post &post);
    /// A result arrived, at this time of the monotonic clock.
    void takeReport(bool wasShown, double atMs);

    int posts() const { return static_cast<int>(m_ads.size()); }
    int reports() const { return static_cast<int>(m_reports.size()); }

    /// Whether advertisements follow each other so fast that less urgent messages have no turn.
    bool runsAway() const;
    /// `address` is where the results were expected.
    CheckResult result(const QString &address) const;

private:
    struct Ad
    {
        bool exists;
        double startedMs;
        double answeredMs;
    };
    struct Report
    {
        bool wasShown;
        double atMs;
    };
    struct Problem
    {
        QString message;
        QString remedy;
    };

    Problem problem(const QString &address) const;
    static Problem problemOf(const Ad &ad, const Report &report);

    QList<Ad> m_ads;
    QList<Report> m_reports;
};
