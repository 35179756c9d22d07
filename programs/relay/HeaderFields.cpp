#include <relay/HeaderFields.h>

#include <QStringList>

namespace {

const auto connectionField = QStringLiteral("Connection");

const QStringList ofOneHop{
    connectionField,
    QStringLiteral("Keep-Alive"),
    QStringLiteral("Proxy-Connection"),
    QStringLiteral("Proxy-Authenticate"),
    QStringLiteral("Proxy-Authorization"),
    QStringLiteral("TE"),
    QStringLiteral("Trailer"),
    QStringLiteral("Transfer-Encoding"),
    QStringLiteral("Upgrade"),
    QStringLiteral("Expect"),
    QStringLiteral("Host"),
    QStringLiteral("Content-Length"),
    QStringLiteral("Date"),
};

} // namespace

QList<BasicHeader::Field> endToEndFields(const BasicHeader &header)
{
    auto left = ofOneHop;
    const auto named = header.value(connectionField).split(u',');
    for (const auto &name : named)
        left.append(name.trimmed());
    auto fields = header.fields();
    fields.removeIf([&](const BasicHeader::Field &field) {
        return left.contains(field.first, Qt::CaseInsensitive);
    });
    return fields;
}
