#include <doctor/Redaction.h>

#include <QRegularExpression>

namespace doctor {

namespace {

const auto mark = QStringLiteral("…");

} // namespace

// By hand: QUrl gives nothing back of an address that is not quite right, which may hold a password
// all the same.
QString redactedUrl(const QString &text)
{
    static const QRegularExpression queryStart(QStringLiteral("[?#;]"));
    const auto query = text.indexOf(queryStart);
    QString place = query < 0 ? text : text.left(query);
    const auto scheme = place.indexOf(QStringLiteral("//"));
    const auto authority = scheme < 0 ? 0 : scheme + 2;
    // A password may hold a slash or a question mark that should have been encoded.
    if (const auto at = text.lastIndexOf(u'@'); at >= authority)
        place = text.left(authority) + mark + (query < 0 || at < query ? place.mid(at) : QString());
    return query < 0 ? place : place + mark;
}

// A setting that lacks its scheme, or has a wrong one, holds an address all the same.
QString redactedText(const QString &text)
{
    return redactedUrl(text);
}

} // namespace doctor
