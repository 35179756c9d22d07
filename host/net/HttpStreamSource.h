#pragma once

#include "WakeUp.h"

#include <QByteArray>

#include <sys/types.h>

#include <deque>
#include <mutex>

struct MHD_Connection;

/**
 * What an HttpStream and the network thread share: the pieces that are still to be sent. While
 * there are none the connection is suspended.
 *
 * Owner: the HttpStream and the HttpExchange, shared.
 * Thread: `write`, `end` and `isOpen` on any; `read` and `abandon` on the network thread.
 */
class HttpStreamSource
{
public:
    /// `wakeUp` of the network thread, which must live until the source is ended.
    explicit HttpStreamSource(const WakeUp &wakeUp) : m_wakeUp(wakeUp) {}

    void write(const QByteArray &piece);
    void end();
    bool isOpen() const;

    /// Takes up to `size` bytes; suspends the connection and returns 0 if there are none yet, -1 at
    /// the end.
    ssize_t read(MHD_Connection *connection, char *to, std::size_t size);
    /// The reader has gone: nothing is kept for it any more.
    void abandon();

private:
    void resume();

    const WakeUp &m_wakeUp;
    mutable std::mutex m_mutex; // guards all the others
    std::deque<QByteArray> m_pieces;
    qsizetype m_taken = 0; // bytes of the first piece
    qint64 m_backlog = 0;  // bytes not taken yet
    bool m_ended = false;
    MHD_Connection *m_suspended = nullptr; // waits for a piece
};
