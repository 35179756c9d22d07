#include <doctor/StreamAddress.h>

#include <QUrlQuery>

namespace doctor {

QUrl streamAddress(const QString &listen, const QString &number, const QString &key)
{
    QUrl url(QStringLiteral("http://") + listen);
    url.setPath(QStringLiteral("/streams/") + number);
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("key"), key);
    url.setQuery(query);
    return url;
}

QUrl fetchedAddress(const QUrl &advertisement)
{
    if (advertisement.scheme() != u"ads")
        return advertisement;
    const QUrlQuery query(advertisement);
    return streamAddress(advertisement.authority(), query.queryItemValue(QStringLiteral("stream")),
                         query.queryItemValue(QStringLiteral("key")));
}

} // namespace doctor
