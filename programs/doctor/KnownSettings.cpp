#include <doctor/KnownSettings.h>

#include <contract/Contract.h>

#include <HttpServerOptions.h>

#include <QJsonObject>

#include <algorithm>

namespace doctor {

namespace {

const auto integer = QStringLiteral("integer");
const auto boolean = QStringLiteral("boolean");
const auto string = QStringLiteral("string");
constexpr int lastDisplayType = 3;

/// A number of which less than one means `instead`.
KnownSetting positive(const char *key, qint64 preset, int instead)
{
    return {.key = QLatin1String(key),
            .type = integer,
            .preset = preset,
            .least = 1,
            .instead = instead};
}

/// A number of which less than one means the default.
KnownSetting positive(const char *key, qint64 preset)
{
    return positive(key, preset, static_cast<int>(preset));
}

/// What is not sent to the display, in the order of the README.
QList<KnownSetting> ownSettings()
{
    const HttpServerOptions server;
    return {
        {QStringLiteral("ViewConnector:server"), string, QStringLiteral("http://127.0.0.1:38080")},
        {QStringLiteral("ViewConnector:port"), integer, 38081},
        positive("ViewConnector:timeout", 1),
        positive("ViewConnector:interval", 250),
        {QStringLiteral("ViewConnector.Ads:url"), string, QString()},
        {QStringLiteral("View.Logic:showQrCode"), boolean, true},
        {QStringLiteral("View.ADTimetable.*:index"), integer, 0},
        {QStringLiteral("View.ADTimetable.*:url"), string, QString()},
        positive("View.ADTimetable.*:time", 60, 1),
        {QStringLiteral("Host:language"), string, QStringLiteral("ru")},
        {QStringLiteral("Shop:goods"), string, QString()},
        {QStringLiteral("HttpServer:address"), string, server.address},
        positive("HttpServer:maxBodyBytes", server.maxBodyBytes),
        positive("HttpServer:maxHeaderBytes", server.maxHeaderBytes),
        positive("HttpServer:maxConnections", server.maxConnections),
        positive("HttpServer:idleTimeout", server.idleTimeout.count()),
        positive("HttpServer:headerTimeout", server.headerTimeout.count()),
        positive("HttpServer:bodyTimeout", server.bodyTimeout.count()),
        positive("HttpServer:answerTimeout", server.answerTimeout.count()),
        {QStringLiteral("HttpServer:guard"), boolean, server.guard},
    };
}

/// "type" is what the plug-in makes of a value, "x-type" the usual type of one that is sent as it
/// is.
KnownSetting fromSchema(const QString &key, const QJsonObject &property)
{
    KnownSetting setting;
    setting.key = key;
    setting.sentAsIs = property.contains(u"x-type");
    setting.type = property[setting.sentAsIs ? u"x-type" : u"type"].toString();
    setting.preset = property[u"default"];
    if (key == u"View.QmlStyle:displayType")
        setting.likeKey = QStringLiteral("View.Style:displayType");
    setting.unit = property[u"x-unit"].toString();
    if (setting.unit == u"px")
        setting.least = 0;
    if (key.endsWith(u":displayType")) {
        setting.least = 0;
        setting.most = lastDisplayType;
    }
    return setting;
}

bool means(const KnownSetting &setting, const QString &key)
{
    const auto star = setting.key.indexOf(u'*');
    if (star < 0)
        return setting.key == key;
    const auto start = setting.key.left(star);
    const auto end = setting.key.mid(star + 1);
    return key.size() > start.size() + end.size() && key.startsWith(start) && key.endsWith(end);
}

} // namespace

QList<KnownSetting> knownSettings(const Contract &contract)
{
    auto settings = ownSettings();
    const auto properties = contract.schema(QStringLiteral("Configure"))[u"properties"].toObject();
    for (auto property = properties.begin(); property != properties.end(); ++property)
        settings.append(fromSchema(property.key(), property->toObject()));
    settings.append({QStringLiteral("View.QmlStyle:*"), QString(), QJsonValue(), true});
    return settings;
}

const KnownSetting *findSetting(const QList<KnownSetting> &settings, const QString &key)
{
    const auto found = std::find_if(settings.begin(), settings.end(),
                                    [&](const auto &setting) { return means(setting, key); });
    return found == settings.end() ? nullptr : &*found;
}

} // namespace doctor
