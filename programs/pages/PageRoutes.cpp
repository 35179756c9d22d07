#include <pages/PageRoutes.h>

#include <pages/PageAnswers.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace {

constexpr int notAllowed = 405;

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

void PageRoutes::add(const QString &method, const QString &path, Handler handler)
{
    m_handlers[path].insert(method, std::move(handler));
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

bool PageRoutes::serve(HttpServer &server, const RequestHeader &header,
                       const QByteArray &content) const
{
    const QUrl target(header.path());
    const auto path = target.path(QUrl::FullyDecoded);
    const auto handlers = m_handlers.constFind(path);
    if (handlers == m_handlers.cend())
        return false;
    const auto handler = handlers->constFind(header.method());
    if (handler == handlers->cend())
        answerWithText(server, notAllowed,
                       QStringLiteral("%1 takes %2").arg(path, handlers->firstKey()));
    else
        (*handler)({server, header, path, QUrlQuery(target), content});
    return true;
}
