#pragma once

#include <QJsonValue>
#include <QList>
#include <QString>

#include <optional>

class Contract;

namespace doctor {

/// A setting that a program reads. A value type.
struct KnownSetting
{
    QString key;           ///< "View.Style:displayType"; "*" in it stands for any name
    QString type;          ///< "integer", "boolean" or "string"
    QJsonValue preset;     ///< what a missing key means
    bool sentAsIs = false; ///< to the display, with the type that it has in the file
    std::optional<int> least = {};
    std::optional<int> most = {};
    std::optional<int> instead = {}; ///< what a number below the least means
    QString likeKey = {};            ///< whose value a missing key has
    QString unit = {};               ///< "RRGGBB", "px", …
};

/// Every setting that is read: those that are sent to the display as the contract tells them, and
/// the others.
QList<KnownSetting> knownSettings(const Contract &contract);

/// The setting that is meant by a key; null for an unknown one.
const KnownSetting *findSetting(const QList<KnownSetting> &settings, const QString &key);

} // namespace doctor
