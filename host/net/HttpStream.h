#pragma once

#include <HostExport.h>

#include <QByteArray>

#include <memory>

class HttpStreamSource;

/**
 * The body of an answer that comes piece by piece, for as long as both sides want.
 *
 * Owner: its writer; the answer ends when the last owner lets go of it.
 * Thread: any, it has a lock of its own.
 * Errors: what is written after the end is dropped. A reader that lags behind by more than
 * `maxBacklogBytes` is cut off rather than served old news.
 * Shut-down: the server ends it when it is destroyed; the stream may outlive the server.
 */
class HOST_EXPORT HttpStream
{
public:
    static constexpr qint64 maxBacklogBytes = 67'108'864; // 64 MiB

    explicit HttpStream(std::shared_ptr<HttpStreamSource> source);
    ~HttpStream();
    Q_DISABLE_COPY_MOVE(HttpStream)

    /// Adds to the body. Never waits; a piece is shared with the streams that are given the same.
    void write(const QByteArray &piece);
    /// Whether the reader is still thought to be there; that it left shows with a later piece.
    bool isOpen() const;

private:
    const std::shared_ptr<HttpStreamSource> m_source;
};
