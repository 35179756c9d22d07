#include <QObjectHelper.h>

#include <QMetaProperty>

QVariantMap QObjectHelper::qobject2qvariant(const QObject *object, const QStringList &leftOut)
{
    QVariantMap properties;
    if (object == nullptr)
        return properties;

    const QMetaObject *meta = object->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const auto name = QString::fromLatin1(property.name());
        if (property.isReadable() && !leftOut.contains(name))
            properties.insert(name, property.read(object));
    }
    const auto dynamicNames = object->dynamicPropertyNames();
    for (const QByteArray &dynamicName : dynamicNames) {
        const auto name = QString::fromUtf8(dynamicName);
        if (!leftOut.contains(name))
            properties.insert(name, object->property(dynamicName.constData()));
    }
    return properties;
}
