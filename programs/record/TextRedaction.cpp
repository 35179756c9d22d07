#include <record/TextRedaction.h>

#include <record/AddressRedaction.h>
#include <record/Masking.h>
#include <record/PersonalNames.h>

#include <QStringList>
#include <QUrl>

const QString greyPicture = QStringLiteral(
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR42mNoAAAAggCB2kUIOwAAAABJRU5E"
    "rkJggg==");

namespace {

/// A text that begins as such a URI is one to its end: the pictures of some hosts have spaces and
/// quotes in them.
QString withoutPictures(const QString &text)
{
    static const auto head = QStringLiteral("data:[\\w.+-]*+(?:/[\\w.+-]*+)?(?:;[\\w.=+\"-]*+)*+,");
    static const QRegularExpression dataUri(
        QStringLiteral("^\\s*+%1.*|\\b%1[^\\s\"'<>)]*").arg(head),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    return replaceAll(text, dataUri, [](const auto &) { return greyPicture; });
}

/// After "password=", "Телефон: " or "Bearer " everything is masked to the end of the line or
/// element.
QString withoutNamedSecrets(const QString &text)
{
    static const QRegularExpression line(QStringLiteral("(?:[^\\r\\n<]++|<(?!/|br))++"),
                                         QRegularExpression::CaseInsensitiveOption);
    // No name is what follows "//": it is a host before its port.
    static const QRegularExpression named(
        QStringLiteral("(?<![\\w.-])(?<!//)([\\w.-]++)(?:[\"']?\\s{0,3}[:=]|\\s)"),
        QRegularExpression::UseUnicodePropertiesOption);
    return replaceAll(text, line, [](const auto &found) {
        const auto each = found.captured();
        auto match = named.globalMatch(each);
        while (match.hasNext()) {
            const auto name = match.next();
            const bool isSecret = name.captured().back().isSpace()
                                      ? name.captured(1).endsWith(u"bearer", Qt::CaseInsensitive)
                                      : isPersonalName(name.captured(1));
            if (isSecret)
                return each.left(name.capturedEnd()) + masked(each.mid(name.capturedEnd()));
        }
        return match.isValid() ? each : masked(each);
    });
}

QString withoutMailAddresses(const QString &text)
{
    static const QRegularExpression mail(
        QStringLiteral("(?<![^\\s@\"<>(),;:])[^\\s@\"<>(),;:]++@[\\w\\[][\\w.:\\]-]*+"),
        QRegularExpression::UseUnicodePropertiesOption);
    return replaceAll(text, mail, [](const auto &found) { return masked(found.captured()); });
}

/// Nine digits or more, as people group them: of a card, a phone, a fiscal document.
QString withoutLongNumbers(const QString &text)
{
    static const QRegularExpression number(
        QStringLiteral(
            "\\d(?:(?:[\\s.,_/()\\p{Pd}\\p{Cf}\\x{b7}\\x{2022}\\x{2212}]|&nbsp;|&#160;){0,3}+"
            "\\d){8,}+"),
        QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression digit(QStringLiteral("\\d"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    return replaceAll(text, number, [](const auto &found) {
        return replaceAll(found.captured(), digit, [](const auto &) { return QString(mask); });
    });
}

QString withoutPlainSecrets(const QString &text)
{
    return withoutLongNumbers(
        withoutMailAddresses(withoutNamedSecrets(withoutSecretsOfAddresses(text))));
}

/// Whether percent signs hide what would be replaced without them.
bool hidesSecrets(QString word)
{
    if (!word.contains(u'%'))
        return false;
    constexpr int mostLayers = 3;
    for (int layer = 0; layer < mostLayers; ++layer) {
        const auto decoded = QUrl::fromPercentEncoding(word.toUtf8());
        if (decoded == word)
            return false;
        if (withoutPlainSecrets(withoutPictures(decoded)) != decoded)
            return true;
        word = decoded;
    }
    return true;
}

QString withoutEncodedSecrets(const QString &text)
{
    static const QRegularExpression word(QStringLiteral("[^\\s\"<>]++"));
    return replaceAll(text, word, [](const auto &found) {
        return hidesSecrets(found.captured()) ? masked(found.captured()) : found.captured();
    });
}

} // namespace

QString redactedText(const QString &text)
{
    // The grey point looks like a secret itself.
    auto parts = withoutPictures(text).split(greyPicture);
    for (auto &part : parts)
        part = withoutPlainSecrets(withoutEncodedSecrets(withoutPlainSecrets(part)));
    return parts.join(greyPicture);
}
