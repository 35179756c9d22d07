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
 * Owner: the program's server side. Thread: that of its HttpServer. Errors: an unknown path is left
 * to the caller, a known one with another method is answered 405.
 */
class PageRoutes
{
public:
    /// Answers the request that is being delivered, now or by holding it.
    using Handler = std::function<void(const PageRequest &)>;

    /// With the files that all pages share, below "/common/".
    PageRoutes();

    void add(const QString &method, const QString &path, Handler handler);
    /// One file of the resources.
    void addFile(const QString &path, const QString &resource);
    /// The files of a resource folder, each at `path` with its name; their number is fixed when the
    /// program is built.
    void addFolder(const QString &path, const QString &resourceFolder);

    /// Answers the request being delivered if its path is known; otherwise false.
    bool serve(HttpServer &server, const RequestHeader &header, const QByteArray &content) const;

private:
    QMap<QString, QMap<QString, Handler>> m_handlers; // by path, by method
};
