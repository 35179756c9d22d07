#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <array>
#include <common/MessageTypes.h>

/// How the messages of one type fared.
struct TypeSummary
{
    QString type;
    qsizetype asked = 0;      ///< by the register
    qsizetype posted = 0;     ///< accepted by the display
    qsizetype superseded = 0; ///< replaced by a newer one before they were posted
};

/**
 * What became of a shop's messages, from the register's report and the display's record.
 *
 * A value type.
 */
struct Summary
{
    QList<TypeSummary> types;  ///< in the order of their urgency, those that occurred
    QList<double> latenciesMs; ///< ascending, from each posted message's last change to its arrival
    bool receiptsEqual = false; ///< the display's last receipt is the register's own document

    double latencyAt(double quantile) const; ///< nearest rank; 0 without any
    QString toText() const;
};

/// `report` as the register writes it with --report, `record` the lines of the display's --record.
Summary summarise(const QJsonObject &report, const QList<QJsonObject> &record);
