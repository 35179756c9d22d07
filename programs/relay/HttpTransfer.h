#pragma once

#include <BasicHeader.h>

#include <QByteArray>
#include <QList>
#include <QString>

#include <chrono>
#include <stop_token>

class QUrl;

/// A request to an HTTP server. A value type.
struct HttpRequest
{
    QByteArray server; ///< its address without a path: "http://127.0.0.1:38080"
    QByteArray method;
    QByteArray path; ///< with its query, sent as it is
    QList<BasicHeader::Field> fields;
    QByteArray body;
};

/// The address of the server that `url` leads to.
QByteArray serverOf(const QUrl &url);

/// What came back. A value type.
struct HttpAnswer
{
    int status = 0; ///< 0: no whole answer
    BasicHeader header;
    QByteArray body;
    QString error; ///< why there is no answer, for people
};

/**
 * Sends a request on a connection of its own, exactly once, and waits for the whole answer.
 *
 * Nothing is followed, unpacked or added, and no proxy is used.
 *
 * Thread: any; it blocks that thread for `patience` at most, and less when a stop is requested.
 * Errors: never throws; the answer tells. One of more than 16 MiB, or with more than 64 KiB of
 * header fields, is given up.
 */
HttpAnswer transfer(const HttpRequest &request, std::chrono::milliseconds patience,
                    const std::stop_token &stop);
