#pragma once

#include <display/MessageReader.h>

#include <contract/Contract.h>

#include <RequestHeader.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QStringList>

/**
 * Judges what is posted to the display by the contract of the wire: each message's body and header
 * fields, and that it is a message at all.
 *
 * Owner: the display. Thread: the main thread. Errors: none; what is wrong with a message is its
 * result.
 */
class ConformanceCheck
{
public:
    /// Of more problems only the number is told.
    static constexpr qsizetype maxProblems = 1000;

    /// Returns what is wrong with a message, for people; empty if it is right.
    QStringList judge(int number, const RequestHeader &header, const ReceivedMessage &message);

    /// Whether something has come, and nothing was wrong with any of it.
    bool hasPassed() const;
    /// Lines for people.
    QStringList report() const;
    /// {"passed":false,"messages":3,"types":{"QrPayment":{"right":2,"wrong":1}},
    ///  "problems":[{"n":3,"type":"QrPayment","problem":"/amount: …"}]}
    QJsonObject toJson() const;

private:
    struct Count
    {
        int right = 0;
        int wrong = 0;
    };

    Count total() const;

    const Contract m_contract;
    QMap<QString, Count> m_counts; // by type
    QJsonArray m_problems;
};
