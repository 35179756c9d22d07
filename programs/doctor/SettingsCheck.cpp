#include <doctor/SettingsCheck.h>

#include <doctor/NearestKey.h>
#include <doctor/Redaction.h>

#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>

namespace doctor {

namespace {

const auto check = QStringLiteral("settings");
/// Of more unknown keys only the number is told.
constexpr qsizetype maxUnknownKeys = 50;

Text typeName(const QString &type)
{
    if (type == u"integer")
        return {"целое число", "an integer"};
    if (type == u"boolean")
        return {"true или false", "true or false"};
    return {"текст в кавычках", "text in quotes"};
}

bool hasType(const QVariant &value, const QString &type)
{
    if (type == u"integer")
        return value.typeId() == QMetaType::LongLong;
    if (type == u"boolean")
        return value.typeId() == QMetaType::Bool;
    return value.typeId() == QMetaType::QString;
}

/// What is in effect, for people; a text that should have been something else is not repeated.
Text effectOf(const SettingInEffect &setting)
{
    if (setting.known.sentAsIs)
        return {"дисплей получит значение как есть и может его не понять",
                "the display gets the value as it is and may not understand it"};
    const auto value = toJson(setting).value(u"value");
    const auto shown =
        value.isString() ? u'"' + value.toString() + u'"' : value.toVariant().toString();
    return Text("действует %1", "in effect is %1").with(shown);
}

Finding wrongType(const SettingInEffect &setting)
{
    return warning(check,
                   Text("%1: значение не того типа; %2.", "%1: a value of the wrong type; %2.")
                       .with(setting.key, effectOf(setting)),
                   Text("Нужно: %1.", "Needed: %1.").with(typeName(setting.known.type)),
                   {{QStringLiteral("key"), setting.key},
                    {QStringLiteral("problem"), QStringLiteral("type")}});
}

Finding outOfRange(const SettingInEffect &setting)
{
    const auto &known = setting.known;
    const auto least = QString::number(*known.least);
    const auto needed =
        known.most
            ? Text("Нужно число от %1 до %2.", "Needed: a number from %1 to %2.")
                  .with(least, qint64{*known.most})
            : Text("Нужно число не меньше %1.", "Needed: a number of at least %1.").with(least);
    return warning(check,
                   Text("%1 = %2 вне допустимых границ; %3.", "%1 = %2 is out of range; %3.")
                       .with(setting.key, setting.stored.toLongLong(), effectOf(setting)),
                   needed,
                   {{QStringLiteral("key"), setting.key},
                    {QStringLiteral("problem"), QStringLiteral("range")}});
}

Finding noColour(const SettingInEffect &setting)
{
    return warning(
        check,
        Text("%1: это не цвет; %2.", "%1: no colour; %2.").with(setting.key, effectOf(setting)),
        {"Нужны шесть шестнадцатеричных цифр в кавычках, например \"ece1e1\".",
         "Needed: six hexadecimal digits in quotes, for example \"ece1e1\"."},
        {{QStringLiteral("key"), setting.key},
         {QStringLiteral("problem"), QStringLiteral("colour")}});
}

Findings checkValue(const SettingInEffect &setting)
{
    const auto &known = setting.known;
    if (!setting.isFromFile() || known.type.isEmpty())
        return {};
    if (!hasType(setting.stored, known.type))
        return {wrongType(setting)};
    const bool ofTimetable = known.key.contains(u'*'); // which has a check of its own
    if (known.type == u"integer" && !ofTimetable) {
        const auto number = setting.stored.toLongLong();
        if ((known.least && number < *known.least) || (known.most && number > *known.most))
            return {outOfRange(setting)};
    }
    static const QRegularExpression colour(QStringLiteral("^[0-9A-Fa-f]{6}$"));
    if (known.unit == u"RRGGBB" && !colour.match(setting.stored.toString()).hasMatch())
        return {noColour(setting)};
    return {};
}

/// "[View.Style] displayType", as it stands in the file.
QString asInFile(const QString &key)
{
    const auto colon = key.indexOf(u':');
    if (colon == 0)
        return key.mid(1); // stands before the first table
    return QStringLiteral("[%1] %2").arg(key.left(colon), key.mid(colon + 1));
}

Finding unknownKey(const QString &fileKey, const QStringList &rightKeys)
{
    const auto key = redactedText(fileKey);
    QJsonObject details{{QStringLiteral("key"), key},
                        {QStringLiteral("problem"), QStringLiteral("unknown")}};
    const auto message =
        Text("%1: такой настройки нет, она не действует.", "%1: no such setting, it has no effect.")
            .with(asInFile(key));
    auto nearest = nearestKey(key, rightKeys);
    if (nearest.isEmpty())
        return warning(check, message,
                       {"Проверьте написание или удалите строку.",
                        "Check how it is written, or remove the line."},
                       details);
    nearest.replace(u'*', QStringLiteral("<id>"));
    details.insert(QStringLiteral("nearest"), nearest);
    return warning(check, message,
                   Text("Возможно, имелось в виду %1. Большие и маленькие буквы различаются.",
                        "Perhaps %1 was meant. Upper and lower case differ.")
                       .with(asInFile(nearest)),
                   details);
}

} // namespace

Findings checkSettings(const QList<SettingInEffect> &settings, const QList<KnownSetting> &known,
                       const QStringList &fileKeys)
{
    Findings problems;
    for (const auto &setting : settings)
        append(problems, checkValue(setting));
    QStringList rightKeys;
    for (const auto &setting : known)
        rightKeys.append(setting.key);
    qsizetype unknown = 0;
    for (const auto &key : fileKeys) {
        if (findSetting(known, key) == nullptr && ++unknown <= maxUnknownKeys)
            problems.push_back(unknownKey(key, rightKeys));
    }

    const qint64 fromFile = std::count_if(settings.begin(), settings.end(),
                                          [](const auto &each) { return each.isFromFile(); });
    Findings findings{ok(check,
                         Text("Настройки прочитаны: из файла %1, по умолчанию %2, неизвестных %3.",
                              "The settings are read: %1 from the file, %2 by default, %3 unknown.")
                             .with(fromFile, settings.size() - fromFile, unknown),
                         {{QStringLiteral("fromFile"), fromFile},
                          {QStringLiteral("byDefault"), settings.size() - fromFile},
                          {QStringLiteral("unknown"), unknown}})};
    append(findings, std::move(problems));
    return findings;
}

} // namespace doctor
