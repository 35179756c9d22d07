#include "HttpGuard.h"

#include <QRegularExpression>

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>

namespace {

QStringList valuesOf(const RequestHeader &header, const char *name)
{
    QStringList values;
    const auto fields = header.fields();
    for (const auto &field : fields) {
        if (field.first.compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
            values.append(field.second);
    }
    return values;
}

/// By the fields of Fetch Metadata, which a browser adds and a page cannot.
bool isPartOfForeignPage(const RequestHeader &header)
{
    return valuesOf(header, "Sec-Fetch-Site").contains(QStringLiteral("cross-site")) &&
           !valuesOf(header, "Sec-Fetch-Mode").contains(QStringLiteral("navigate"));
}

bool isLoopbackIpv4(const QString &name)
{
    constexpr std::uint32_t loopbackNet = 127;
    in_addr address{};
    return inet_pton(AF_INET, name.toLatin1().constData(), &address) == 1 &&
           ntohl(address.s_addr) >> 24 == loopbackNet;
}

bool isLoopbackIpv6(const QString &name)
{
    in6_addr address{};
    return inet_pton(AF_INET6, name.toLatin1().constData(), &address) == 1 &&
           IN6_IS_ADDR_LOOPBACK(&address);
}

} // namespace

HttpGuard::HttpGuard(const QString &address)
    : m_address(address == QLatin1String("0.0.0.0") ? QString() : address)
{
}

bool HttpGuard::admits(const RequestHeader &header) const
{
    const auto hosts = valuesOf(header, "Host");
    const auto origins = valuesOf(header, "Origin");
    return !hosts.isEmpty() && std::all_of(hosts.cbegin(), hosts.cend(), [this](const auto &host) {
        return isOwnAuthority(host);
    }) && std::all_of(origins.cbegin(), origins.cend(), [this](const auto &origin) {
        return isOwnOrigin(origin);
    }) && !isPartOfForeignPage(header);
}

bool HttpGuard::isOwnAuthority(const QString &authority) const
{
    static const QRegularExpression form(
        QStringLiteral("\\A(?:\\[([0-9A-Fa-f:.]+)\\]|([A-Za-z0-9.-]+))(?::[0-9]{0,5})?\\z"));
    const auto match = form.match(authority);
    return match.hasMatch() && (isLoopbackIpv6(match.captured(1)) || isOwnName(match.captured(2)));
}

bool HttpGuard::isOwnOrigin(const QString &origin) const
{
    static const QRegularExpression form(QStringLiteral("\\Ahttps?://(.*)\\z"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(origin);
    return match.hasMatch() && isOwnAuthority(match.captured(1));
}

bool HttpGuard::isOwnName(const QString &name) const
{
    return name.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0 ||
           isLoopbackIpv4(name) || (!name.isEmpty() && name == m_address);
}
