#pragma once

#include <HttpServer.h>

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QUrlQuery>

#include <functional>
#include <utility>

/// A request for a page or to one. A value type, but for the server that it is to be answered by.
struct PageRequest
{
    HttpServer &server;
    RequestHeader header;
    QString path; ///< decoded, without the query
    QUrlQuery query;
    QByteArray content;
};

/**
 * What the pages of a program consist of: files that are built into the program, and handlers by
 * method and path.
 *
 * Owner: the program's server side. Thread: that of its HttpServer. Errors: as `serve` tells.
 */
class PageRoutes
{
public:
    /// Answers the request that is being delivered, now or by holding it.
    using Handler = std::function<void(const PageRequest &)>;

    /// With the files that all pages share, below "/common/".
    PageRoutes();

    void add(const QString &method, const QString &path, const Handler &handler);
    /// One file of the resources.
    void addFile(const QString &path, const QString &resource);
    /// The files of a resource folder, each at `path` with its name; their number is fixed when the
    /// program is built.
    void addFolder(const QString &path, const QString &resourceFolder);

    /// Whether the path of a request is known.
    bool has(const RequestHeader &header) const;
    /// Answers the request being delivered; if its path is unknown with 404, and if it is known for
    /// other methods with 405.
    void serve(HttpServer &server, const RequestHeader &header, const QByteArray &content) const;

private:
    QMap<QString, QMap<QString, Handler>> m_handlers; // by path, by method
};
