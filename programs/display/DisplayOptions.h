#pragma once

#include <display/Switches.h>

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

/// What the display was asked to do on its command line.
struct DisplayOptions
{
    int port = 38080;
    QUrl pluginUrl{QStringLiteral("http://127.0.0.1:38081")};
    std::optional<int> pagePort; ///< listens there, too
    QString recordFile;          ///< empty: no record
    QString stateFile;           ///< empty: the last state is not kept
    Switches switches;
    bool check = false; ///< judge what comes by the contract
    QString reportFile; ///< of that; empty: none
    bool debug = false;

    /// Empty if the arguments only asked for a text. Throws UsageError.
    static std::optional<DisplayOptions> parse(const QStringList &arguments);
};
