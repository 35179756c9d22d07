#pragma once

#include <adservice/Fault.h>

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

/// What the ad service was asked to do on its command line.
struct AdServiceOptions
{
    int port = 38083;
    QString listen; ///< HOST:PORT that is announced; empty: where the service listens
    int stream = 1;
    QString key;       ///< of the stream; never empty after `parse`
    QString adsFolder; ///< empty: no still advertisements
    std::chrono::milliseconds frameTime{200};
    std::chrono::seconds streamTime{0}; ///< 0: a stream goes on
    std::chrono::milliseconds answerAfter{0};
    Fault fault = Fault::None;
    bool debug = false;

    /// Empty if the arguments only asked for a text. Throws UsageError.
    static std::optional<AdServiceOptions> parse(const QStringList &arguments);
};
