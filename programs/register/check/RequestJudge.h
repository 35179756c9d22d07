#pragma once

#include <register/check/CheckResult.h>

#include <contract/Contract.h>

#include <QByteArray>
#include <QMap>
#include <QStringList>

/**
 * Judges what a display under test asks of the plug-in: pictures, and the results of its
 * advertisements.
 *
 * Owner: the check. Thread: the main thread. Errors: they are the results.
 */
class RequestJudge
{
public:
    /// `body` is a request of the display's.
    void take(const QByteArray &body);

    /// How many requests of that name have come, right or wrong.
    int count(const QString &name) const { return m_counts.value(name); }

    /// `port` is where the requests were expected.
    CheckResults results(int port) const;

private:
    CheckResult ofPictures(const QString &address) const;
    CheckResult ofAdvertisements(const QString &address) const;
    CheckResult ofOthers() const;

    const Contract m_contract;
    QMap<QString, int> m_counts;           // by the request's name
    QMap<QString, QStringList> m_problems; // of these; of others, under an empty name
};
