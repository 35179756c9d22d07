#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

/// A setting of the screen's style by its name, as "showImages". In the touch layout one of
/// "View.QmlStyle" takes the place of that of "View.Style", unless it is empty or of another type.
QJsonValue lookSetting(const QJsonObject &settings, const QString &name, QJsonValue::Type type);
