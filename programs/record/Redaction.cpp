#include <record/Redaction.h>

#include <record/AddressRedaction.h>
#include <record/Masking.h>
#include <record/PersonalNames.h>
#include <record/TextRedaction.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Amounts and times can be as long as a card's number, and a display shows them.
struct ShownNumber
{
    const char *name;
    double most; ///< what is larger is none
};

constexpr double mostAmount = 1e9; // kopecks
constexpr double mostTime = 2147483647;
constexpr std::array shownNumbers{
    ShownNumber{"amount", mostAmount},      ShownNumber{"sum", mostAmount},
    ShownNumber{"total", mostAmount},       ShownNumber{"price", mostAmount},
    ShownNumber{"disc_sum", mostAmount},    ShownNumber{"change", mostAmount},
    ShownNumber{"discountSum", mostAmount}, ShownNumber{"quantity", mostAmount},
    ShownNumber{"time", mostTime},          ShownNumber{"timeout", mostTime}};
constexpr double mostOtherNumber = 99999999; // eight digits

/// JSON in a text in JSON … : what lies deeper is masked whole.
constexpr int mostNestedTexts = 3;

QJsonValue redacted(const QString &name, const QJsonValue &value, int nested);

QJsonValue numberOrZero(const QString &name, double number)
{
    const auto *const shown =
        std::find_if(shownNumbers.begin(), shownNumbers.end(),
                     [&](const auto &each) { return name == QLatin1String(each.name); });
    const double most = shown == shownNumbers.end() ? mostOtherNumber : shown->most;
    return std::abs(number) <= most ? number : 0;
}

QString redactedString(const QString &text, int nested)
{
    const auto document = QJsonDocument::fromJson(text.toUtf8());
    if (document.isNull())
        return redactedText(text);
    if (nested >= mostNestedTexts)
        return masked(text);
    const auto inner =
        document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array());
    const auto result = redacted({}, inner, nested + 1);
    const auto json =
        result.isObject() ? QJsonDocument(result.toObject()) : QJsonDocument(result.toArray());
    return QString::fromUtf8(json.toJson(QJsonDocument::Compact));
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
            masks.insert(redactedText(each.key()), maskedValue(each.value()));
        return masks;
    }
    default:
        return value;
    }
}

/// Every text in it is one of a payment code, and stays as long as it was: the code keeps its size.
QJsonValue maskedCode(const QString &name, const QJsonValue &value)
{
    if (value.isString())
        return QString(value.toString().size(), mask);
    if (value.isArray()) {
        QJsonArray array;
        for (const auto &each : value.toArray())
            array.append(maskedCode(name, each));
        return array;
    }
    if (value.isObject()) {
        const auto object = value.toObject();
        QJsonObject masks;
        for (auto each = object.begin(); each != object.end(); ++each) {
            masks.insert(redactedText(each.key()), isPersonalName(each.key())
                                                       ? maskedValue(each.value())
                                                       : maskedCode(each.key(), each.value()));
        }
        return masks;
    }
    return value.isDouble() ? numberOrZero(name, value.toDouble()) : value;
}

/// The members of an array are judged by the array's name.
QJsonValue redacted(const QString &name, const QJsonValue &value, int nested)
{
    switch (value.type()) {
    case QJsonValue::String:
        return redactedString(value.toString(), nested);
    case QJsonValue::Double:
        return numberOrZero(name, value.toDouble());
    case QJsonValue::Array: {
        QJsonArray array;
        for (const auto &each : value.toArray())
            array.append(redacted(name, each, nested));
        return array;
    }
    case QJsonValue::Object: {
        const auto object = value.toObject();
        QJsonObject result;
        for (auto each = object.begin(); each != object.end(); ++each) {
            const auto &key = each.key();
            result.insert(redactedText(key), isPersonalName(key) ? maskedValue(each.value())
                                             : isPaymentCodeName(key)
                                                 ? maskedCode(key, each.value())
                                                 : redacted(key, each.value(), nested));
        }
        return result;
    }
    default:
        return value;
    }
}

} // namespace

QJsonValue Redaction::value(const QJsonValue &value)
{
    return redacted({}, value, 0);
}

QString Redaction::text(const QString &text)
{
    return redactedText(text);
}

QString Redaction::path(const QString &path)
{
    return redactedText(maskedAddress(path));
}
