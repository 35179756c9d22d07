#pragma once

#include <HostExport.h>
#include <MockFactory.h>

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrl>

#include <memory>

namespace Log4Qt {
class Logger;
}

/**
 * Posts to one HTTP server at a time and waits for the answer.
 *
 * Owner: whoever created it, usually through MockFactory<RestClient>.
 * Thread: any one thread at a time. `post` blocks that thread, at most for the request time-out,
 * and runs no events meanwhile, so nothing can re-enter the caller.
 * Errors: `post` never throws; `result` tells how it ended. The logger hears when the server
 * became unreachable and why, and when it answered again, not each try.
 * Shut-down: the destructor closes the connection; a post under way must have ended.
 *
 * Only a 2xx status is a success, of an answer that is HTTP, is whole, and came when the message
 * had been sent or, on a new connection, is followed by the rest of it. Nothing is followed
 * (redirects), nothing is sent twice, proxies of the environment are not used, and an answer beyond
 * 1 MiB or header fields beyond 64 KiB end the request: the caller wants the status, not the
 * content. By http the connection is kept for the next post.
 */
class HOST_EXPORT RestClient
{
public:
    using Headers = QHash<QString, QString>;

    RestClient();
    virtual ~RestClient();
    Q_DISABLE_COPY_MOVE(RestClient)

    virtual void setLogger(const Log4Qt::Logger *logger);
    /// The server's name in log lines.
    virtual void setTargetAlias(const QString &alias);
    /// With true, the default, each change between reachable and unreachable is logged; with false
    /// each request as well, at level debug.
    virtual void setCompactLogs(bool compact);

    /// Seconds from the start of a post to the end of its answer; 30 unless set, values below 1
    /// mean 1.
    virtual void setRequestTimeout(int seconds);
    virtual int requestTimeout() const;

    /// Posts `body` and waits for the answer. Returns `result`.
    virtual int post(const QUrl &url, const QByteArray &body, const Headers &headers);

    /// How the last post ended: 0 success, below 100 the transfer's CURLcode, otherwise the HTTP
    /// status that was not 2xx.
    virtual int result() const;

private:
    struct Transfer;
    const std::unique_ptr<Transfer> m_transfer;
};

extern template class HOST_EXPORT MockFactory<RestClient>;
