#pragma once

#include <doctor/Text.h>

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>

namespace doctor {

/// How a request to an HTTP server went.
enum class Outcome {
    Answered,        ///< with any status
    NameUnknown,     ///< the name of the server has no address
    Refused,         ///< nobody listens on that port
    Unreachable,     ///< there is no way to that machine
    ConnectTimedOut, ///< the machine does not react
    AnswerTimedOut,  ///< it takes the connection and does not answer
    TlsFailed,       ///< no agreement on the encryption, or a certificate that is not trusted
    NotHttp,         ///< it answers, but not in HTTP
    Closed,          ///< it closes the connection before the end of its answer
    Other,
};

using Milliseconds = std::chrono::duration<double, std::milli>;

/// A request of the doctor's. A value type.
struct HttpRequest
{
    QUrl url;
    std::chrono::milliseconds timeout;   ///< of the whole exchange
    std::optional<QByteArray> json = {}; ///< posted; without it the request is a GET
    qsizetype maxBodyBytes = 0;          ///< of the answer; it is cut off behind them
};

/// What became of a request. A value type.
struct HttpAnswer
{
    Outcome outcome = Outcome::Other;
    int status = 0;                      ///< 0 unless answered
    Milliseconds connectTime{};          ///< from the start to the connection; 0 without one
    Milliseconds firstByteTime{};        ///< from the start to the answer; 0 without one
    QString peer;                        ///< the IP address that was connected to
    QMap<QByteArray, QByteArray> fields; ///< of the header, by name in lower case
    QByteArray body;
    bool isCutOff = false; ///< the body went on beyond the limit
    QString problem;       ///< what the library says

    QDateTime date() const; ///< the field "Date"; invalid without one
};

/// Exchanges a request for an answer, with libcurl and without proxies. At most 64 KiB of header
/// and the given length of body are taken. A GET follows no redirect, a POST does, as the plug-in
/// does when it posts to an ad service. Blocks, at most for the time-out.
HttpAnswer exchange(const HttpRequest &request);

/// Why there was no answer, as the end of a sentence.
Text reasonOf(const HttpAnswer &answer);
/// What to do about it; `start` tells how the server is started again.
Text remedyOf(const HttpAnswer &answer, const Text &start);

} // namespace doctor
