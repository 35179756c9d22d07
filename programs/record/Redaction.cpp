#include <record/Redaction.h>

#include <record/PersonalNames.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace {

constexpr QChar mask = u'x';
const auto maskText = QString(mask);

/// One grey point.
const auto greyPicture = QStringLiteral(
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR42mNoAAAAggCB2kUIOwAAAABJRU5E"
    "rkJggg==");

/// Amounts and times can be as long as a card's number, and a display shows them.
constexpr std::array shownNumbers{"amount", "sum",         "total",    "price", "disc_sum",
                                  "change", "discountSum", "quantity", "time",  "timeout"};
constexpr double leastLongNumber = 1e8; // nine digits

const auto qrCodeName = QStringLiteral("qr"); // part of it

using Replacement = std::function<QString(const QRegularExpressionMatch &)>;

QString replaceAll(const QString &text, const QRegularExpression &pattern,
                   const Replacement &replacement)
{
    QString result;
    qsizetype end = 0;
    for (auto match = pattern.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        result += QStringView(text).mid(end, found.capturedStart() - end);
        result += replacement(found);
        end = found.capturedEnd();
    }
    result += QStringView(text).mid(end);
    return result;
}

/// Letters and digits are masked, what is between them stays.
QString masked(QString text)
{
    for (auto &character : text) {
        if (character.isLetterOrNumber() || character.isSurrogate())
            character = mask;
    }
    return text;
}

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
    static const QRegularExpression parts(QStringLiteral("^(\\?([^#]*))?(#(.*))?$"),
                                          QRegularExpression::DotMatchesEverythingOption);
    const auto found = parts.match(tail);
    QString result;
    if (found.hasCaptured(1))
        result += u'?' + maskedQuery(found.captured(2));
    if (found.hasCaptured(3))
        result += u'#' + (found.captured(4).isEmpty() ? QString() : maskText);
    return result;
}

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

QString withoutSecretsOfAddresses(const QString &text)
{
    static const QRegularExpression address(
        QStringLiteral(
            "([a-z][a-z0-9+.-]{0,20}://)(?:[^\\s\"'<>/?#]*@)?([^\\s\"'<>?#]*)([^\\s\"'<>]*)"),
        QRegularExpression::CaseInsensitiveOption);
    return replaceAll(text, address, [](const auto &found) {
        return found.captured(1) + found.captured(2) + maskedTail(found.captured(3));
    });
}

QString withoutMailAddresses(const QString &text)
{
    static const QRegularExpression mail(
        QStringLiteral("(?<![\\w.+%-])[\\w.+%-]++@[\\w-]++(?:\\.[\\w-]++)++"),
        QRegularExpression::UseUnicodePropertiesOption);
    return replaceAll(text, mail, [](const auto &found) { return masked(found.captured()); });
}

/// Nine digits or more, as people group them: of a card, a phone, a fiscal document.
QString withoutLongNumbers(const QString &text)
{
    static const QRegularExpression number(
        QStringLiteral("\\d(?:[\\s()\\x{2010}-\\x{2015}-]{0,2}+\\d){8,}+"),
        QRegularExpression::UseUnicodePropertiesOption);
    return replaceAll(text, number, [](const auto &found) { return masked(found.captured()); });
}

bool isShownNumber(const QString &name)
{
    return std::any_of(shownNumbers.begin(), shownNumbers.end(),
                       [&](const char *each) { return name == QLatin1String(each); });
}

QJsonValue numberOrZero(const QJsonValue &number)
{
    return std::abs(number.toDouble()) < leastLongNumber ? number : QJsonValue(0);
}

/// All of it is personal.
QJsonValue maskedValue(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::String:
        return value.toString().startsWith(u"data:") ? greyPicture : masked(value.toString());
    case QJsonValue::Double:
        return 0;
    case QJsonValue::Array: {
        QJsonArray array;
        for (const auto &each : value.toArray())
            array.append(maskedValue(each));
        return array;
    }
    case QJsonValue::Object: {
        const auto object = value.toObject();
        QJsonObject masks;
        for (auto each = object.begin(); each != object.end(); ++each)
            masks.insert(Redaction::text(each.key()), maskedValue(each.value()));
        return masks;
    }
    default:
        return value;
    }
}

} // namespace

QJsonValue Redaction::value(const QJsonValue &value)
{
    return property({}, value);
}

QString Redaction::text(const QString &text)
{
    return withoutLongNumbers(
        withoutMailAddresses(withoutSecretsOfAddresses(withoutPictures(text))));
}

QString Redaction::path(const QString &path)
{
    static const QRegularExpression tail(QStringLiteral("[?#]"));
    const auto end = path.indexOf(tail);
    return text(end < 0 ? path : path.left(end) + maskedTail(path.mid(end)));
}

QJsonObject Redaction::object(const QJsonObject &object)
{
    QJsonObject redacted;
    for (auto each = object.begin(); each != object.end(); ++each)
        redacted.insert(text(each.key()), property(each.key(), each.value()));
    return redacted;
}

/// The members of an array are judged by the array's name.
QJsonValue Redaction::property(const QString &name, const QJsonValue &value)
{
    if (isPersonalName(name))
        return maskedValue(value);
    switch (value.type()) {
    case QJsonValue::String:
        // As long as it was: the code keeps its size.
        return name.contains(qrCodeName, Qt::CaseInsensitive)
                   ? QString(value.toString().size(), mask)
                   : text(value.toString());
    case QJsonValue::Double:
        return isShownNumber(name) ? value : numberOrZero(value);
    case QJsonValue::Array: {
        QJsonArray array;
        for (const auto &each : value.toArray())
            array.append(property(name, each));
        return array;
    }
    case QJsonValue::Object:
        return object(value.toObject());
    default:
        return value;
    }
}
