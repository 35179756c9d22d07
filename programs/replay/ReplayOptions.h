#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

/// What the replay was asked to do on its command line.
struct ReplayOptions
{
    QString recording;
    QUrl displayUrl{QStringLiteral("http://127.0.0.1:38080")};
    double speed = 1; ///< 2: twice as fast as recorded; 0: as fast as the display answers
    bool json = false;
    bool debug = false;

    /// Empty if the arguments only asked for a text. Throws UsageError.
    static std::optional<ReplayOptions> parse(const QStringList &arguments);
};
