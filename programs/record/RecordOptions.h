#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

/// What the recorder was asked to do on its command line.
struct RecordOptions
{
    QUrl displayUrl{QStringLiteral("http://127.0.0.1:38080")};
    int port = 38090; ///< where the plug-in posts to
    QUrl pluginUrl{QStringLiteral("http://127.0.0.1:38081")};
    int pluginPort = 38091; ///< where the display asks
    QString output = QStringLiteral("-");
    bool redacts = true;
    bool debug = false;

    /// Empty if the arguments only asked for a text. Throws UsageError.
    static std::optional<RecordOptions> parse(const QStringList &arguments);
};
