#include <pages/PageRoutes.h>

#include <pages/PageAnswers.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace {

constexpr int notFound = 404;
constexpr int notAllowed = 405;

QString pathOf(const QUrl &target)
{
    return target.path(QUrl::FullyDecoded);
}

void refuseMethod(HttpServer &server, const QString &path, const QString &allowed)
{
    auto header = pageHeader(notAllowed, QStringLiteral("text/plain; charset=utf-8"));
    header.setValue(QStringLiteral("Allow"), allowed);
    server.sendResponse(header, QStringLiteral("%1 takes %2\n").arg(path, allowed).toUtf8());
}

QString contentTypeOf(const QString &resource)
{
    static const QMap<QString, QString> types{
        {QStringLiteral("css"), QStringLiteral("text/css; charset=utf-8")},
        {QStringLiteral("html"), QStringLiteral("text/html; charset=utf-8")},
        {QStringLiteral("js"), QStringLiteral("text/javascript; charset=utf-8")},
        {QStringLiteral("svg"), QStringLiteral("image/svg+xml")},
    };
    return types.value(QFileInfo(resource).suffix(), QStringLiteral("application/octet-stream"));
}

} // namespace

PageRoutes::PageRoutes()
{
    addFolder(QStringLiteral("/common/"), QStringLiteral(":/common"));
    addFile(QStringLiteral("/favicon.ico"), QStringLiteral(":/common/icon.svg"));
}

void PageRoutes::add(const QString &method, const QString &path, const Handler &handler)
{
    m_handlers[path].insert(method, handler);
}

void PageRoutes::addFile(const QString &path, const QString &resource)
{
    add(QStringLiteral("GET"), path, [resource](const PageRequest &request) {
        QFile file(resource);
        file.open(QIODevice::ReadOnly); // it is part of the program
        answerWith(request.server, contentTypeOf(resource), file.readAll());
    });
}

void PageRoutes::addFolder(const QString &path, const QString &resourceFolder)
{
    const auto names = QDir(resourceFolder).entryList(QDir::Files);
    for (const auto &name : names)
        addFile(path + name, resourceFolder + u'/' + name);
}

bool PageRoutes::has(const RequestHeader &header) const
{
    return m_handlers.contains(pathOf(QUrl(header.path())));
}

void PageRoutes::serve(HttpServer &server, const RequestHeader &header,
                       const QByteArray &content) const
{
    const QUrl target(header.path());
    const auto path = pathOf(target);
    const auto handlers = m_handlers.value(path);
    if (handlers.isEmpty())
        answerWithText(server, notFound, QStringLiteral("there is no page at %1").arg(path));
    else if (!handlers.contains(header.method()))
        refuseMethod(server, path, QStringList(handlers.keys()).join(QStringLiteral(", ")));
    else
        handlers[header.method()]({server, header, path, QUrlQuery(target), content});
}
