#include <display/LookSetting.h>

QJsonValue lookSetting(const QJsonObject &settings, const QString &name, QJsonValue::Type type)
{
    const bool isTouch = settings[u"View.Interface:touchng"].toBool();
    const auto own = isTouch ? settings[QStringLiteral("View.QmlStyle:") + name] : QJsonValue();
    return own.type() == type && own != QJsonValue(QString())
               ? own
               : settings[QStringLiteral("View.Style:") + name];
}
