#include <record/AddressRedaction.h>

#include <record/Masking.h>

#include <QStringList>

#include <algorithm>

namespace {

const auto maskText = QString(mask);

/// Names of arguments stay, their values go; so does an argument that is a value alone.
QString maskedQuery(const QString &query)
{
    static const QRegularExpression argument(QStringLiteral("[^&;]+"));
    return replaceAll(query, argument, [](const auto &found) {
        const auto name = found.captured().left(found.captured().indexOf(u'=') + 1);
        return found.captured() == name ? name : name + maskText;
    });
}

/// What follows the path: "?query#fragment", either or both missing.
QString maskedTail(const QString &tail)
{
    const auto hash = tail.indexOf(u'#');
    const auto query = tail.left(hash);
    QString result;
    if (!query.isEmpty())
        result += u'?' + maskedQuery(query.mid(1));
    if (hash >= 0)
        result += u'#' + (hash + 1 < tail.size() ? maskText : QString());
    return result;
}

/// A key of a file, a reference of a payment: long, with letters and digits.
bool isOpaque(const QString &segment)
{
    constexpr int leastLength = 16;
    const auto letters = std::count_if(segment.begin(), segment.end(),
                                       [](QChar character) { return character.isLetter(); });
    const auto digits = std::count_if(segment.begin(), segment.end(),
                                      [](QChar character) { return character.isNumber(); });
    return letters > 0 && digits > 0 && letters + digits >= leastLength;
}

QString maskedPath(const QString &path)
{
    static const QRegularExpression argument(QStringLiteral(";([^;=/]*=)[^;/]+"));
    static const QRegularExpression segment(QStringLiteral("[^/]+"));
    const auto bare = replaceAll(
        path, argument, [](const auto &found) { return u';' + found.captured(1) + maskText; });
    return replaceAll(bare, segment, [](const auto &found) {
        return isOpaque(found.captured()) ? masked(found.captured()) : found.captured();
    });
}

/// A password may have blanks in it, if one does not look for them for ever.
QString withoutUsers(const QString &text)
{
    static const QRegularExpression user(
        QStringLiteral("((?:[a-z][a-z0-9+.-]{0,20}:)?//)"
                       "(?:[^\\s/:@]*+:(?!\\d{1,5}(?:[/?#\\s\"'<>),]|$))[^\\r\\n]{0,200}@)?"
                       "(?:[^\\s\"<>]*@)?([^\\s\"<>]*)"),
        QRegularExpression::CaseInsensitiveOption);
    return replaceAll(text, user,
                      [](const auto &found) { return found.captured(1) + found.captured(2); });
}

/// "sip:user:password@host".
QString withoutUsersOfOtherSchemes(const QString &text)
{
    static const QRegularExpression user(
        QStringLiteral("(?<![a-z0-9+.-])([a-z][a-z0-9+.-]{1,20}:)(?!//)([^\\s\"<>]++)"),
        QRegularExpression::CaseInsensitiveOption);
    return replaceAll(text, user, [](const auto &found) {
        const auto rest = found.captured(2);
        return found.captured(1) + (rest.contains(u'@') ? masked(rest) : rest);
    });
}

} // namespace

QString maskedAddress(const QString &address)
{
    static const QRegularExpression tail(QStringLiteral("[?#]"));
    const auto end = address.indexOf(tail);
    return end < 0 ? maskedPath(address)
                   : maskedPath(address.left(end)) + maskedTail(address.mid(end));
}

QString withoutSecretsOfAddresses(const QString &text)
{
    static const QRegularExpression word(QStringLiteral("[^\\s\"<>]++"));
    return replaceAll(withoutUsersOfOtherSchemes(withoutUsers(text)), word, [](const auto &found) {
        const auto each = found.captured();
        const auto query = each.indexOf(u'?');
        const bool isAddress = each.contains(u'/') || (query > 0 && each.indexOf(u'=', query) > 0);
        return isAddress ? maskedAddress(each) : each;
    });
}
