#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

/// What the register was asked to do on its command line.
struct RegisterOptions
{
    QString configFile;
    QString pluginFile;
    QString imagesFolder;        ///< empty: the current folder, and no pictures of goods
    QString commandsFile;        ///< "-": standard input; empty: no commands
    QString reportFile;          ///< empty: no report
    bool stay = false;           ///< go on after the last command
    std::optional<int> pagePort; ///< of the cashier's page, 0 for a free one; empty: no page
    QUrl inspector;              ///< who is told of what was asked for; empty: nobody
    QUrl check;                  ///< the display to be checked; empty: none
    int requestPort = 0;         ///< where that display is to send its requests
    bool debug = false;

    /// Empty if the arguments only asked for a text. Throws UsageError. `defaultPlugin` is used
    /// where the arguments name none.
    static std::optional<RegisterOptions> parse(const QStringList &arguments,
                                                const QString &defaultPlugin);
};
