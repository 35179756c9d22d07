#include <register/HostCommands.h>

#include <register/CommandError.h>
#include <register/CommandFields.h>
#include <register/Commands.h>
#include <register/Till.h>

#include <Config.h>
#include <ImageDao.h>
#include <Singleton.h>
#include <Tr.h>

#include <QDir>
#include <QFile>
#include <QMetaProperty>

namespace {

/// {"tr":{"ru":"…"}} is a text in several languages; anything else is what JSON makes of it.
QVariant toArgument(const QJsonValue &value)
{
    const auto trKey = QStringLiteral("tr");
    const auto object = value.toObject();
    if (object.size() != 1 || !object.value(trKey).isObject())
        return value.toVariant();

    QMap<QString, QString> texts;
    const auto byLanguage = object.value(trKey).toObject();
    for (auto text = byLanguage.begin(); text != byLanguage.end(); ++text)
        texts.insert(text.key(), text->toString());
    return QVariant::fromValue(tr::Tr(texts));
}

void notifyEvent(Till &till, const CommandFields &fields)
{
    const int code = fields.integer(QStringLiteral("code"));
    const auto object = fields.object(QStringLiteral("arguments"), QJsonObject());
    QVariantMap arguments;
    for (auto argument = object.begin(); argument != object.end(); ++argument)
        arguments.insert(argument.key(), toArgument(*argument));
    till.notify(Event(code, arguments));
}

void checkWritable(const AbstractDocument &document, const QString &name)
{
    const auto *meta = document.metaObject();
    const int declared = meta->indexOfProperty(name.toUtf8().constData());
    if (declared >= 0 && !meta->property(declared).isWritable())
        throw CommandError(QStringLiteral("the property \"%1\" of this document follows from its "
                                          "content: change it with the cashier's commands")
                               .arg(name));
}

/// Sets all of them, or none if one cannot be set.
void setProperties(AbstractDocument &document, const QJsonObject &properties)
{
    const auto names = properties.keys();
    for (const auto &name : names)
        checkWritable(document, name);
    for (const auto &name : names)
        document.setProperty(name.toUtf8().constData(), properties[name].toVariant());
}

void setDocument(Till &till, const CommandFields &fields)
{
    const auto properties = QStringLiteral("properties");
    if (fields.value(properties).isNull())
        return till.setDocument({});
    const auto document = QSharedPointer<BasicDocument>::create();
    setProperties(*document, fields.object(properties));
    till.setDocument(document);
}

control::Action toAction(const CommandFields &fields, const control::Action &defaultAction)
{
    return {static_cast<EContext::Code>(
                fields.integer(QStringLiteral("context"), defaultAction.context)),
            static_cast<control::EActionType>(
                fields.integer(QStringLiteral("action"), defaultAction.type))};
}

void changeDocument(Till &till, const CommandFields &fields)
{
    const auto document = till.document();
    if (!document)
        throw CommandError(QStringLiteral("there is no current document: set one with "
                                          "{\"do\":\"document\",\"properties\":{…}}"));
    const auto action = toAction(fields, control::Action());
    setProperties(*document, fields.object(QStringLiteral("properties")));
    till.runAction(action);
}

void runAction(Till &till, const CommandFields &fields)
{
    const int context = fields.integer(QStringLiteral("context"));
    const int action = fields.integer(QStringLiteral("action"));
    till.runAction(
        {static_cast<EContext::Code>(context), static_cast<control::EActionType>(action)});
}

void writeSetting(const CommandFields &fields)
{
    const auto key = fields.text(QStringLiteral("key"));
    if (!key.contains(u':'))
        throw CommandError(
            QStringLiteral("\"%1\" is no key: give one like \"View.Logic:showQrCode\"").arg(key));
    if (!fields.contains(QStringLiteral("value")))
        throw CommandError(QStringLiteral("\"value\" is missing: give the setting's value, or null "
                                          "to remove the setting"));
    const auto value = fields.value(QStringLiteral("value"));
    Singleton<Config>::instance().setValue(key, value.isNull() ? QVariant() : value.toVariant());
}

QByteArray readPicture(const QString &imagesFolder, const QString &name)
{
    QFile file(QDir(imagesFolder).absoluteFilePath(name));
    if (!file.open(QIODevice::ReadOnly))
        throw CommandError(
            QStringLiteral("the picture \"%1\" cannot be read: %2").arg(name, file.errorString()));
    QByteArray content = file.readAll();
    if (content.isEmpty())
        throw CommandError(QStringLiteral("the picture \"%1\" is empty").arg(name));
    return content;
}

void storeImage(const QString &imagesFolder, const CommandFields &fields)
{
    const auto json = fields.object(QStringLiteral("id"));
    const ImageId id(json);
    if (id.toJson() != json || id.value().isEmpty())
        throw CommandError(QStringLiteral("\"id\" names no picture: give one like "
                                          "{\"type\":\"GoodsCode\",\"value\":\"100\"}, the type "
                                          "being GoodsCode or Barcode"));
    const auto file = fields.text(QStringLiteral("file"), QString());
    Singleton<ImageDao>::instance().store(
        Image(id, file.isEmpty() ? QByteArray() : readPicture(imagesFolder, file)));
}

void require(bool done, const QString &what)
{
    if (!done)
        throw CommandError(QStringLiteral("the plug-in's %1() returned false").arg(what));
}

} // namespace

void addHostCommands(Commands &commands, Till &till, const QString &imagesFolder)
{
    const auto add = [&](const char *name, auto handler) {
        commands.add(QString::fromLatin1(name),
                     [handler](const QJsonObject &command) { handler(CommandFields(command)); });
    };
    using Fields = const CommandFields &;
    add("event", [&till](Fields fields) { notifyEvent(till, fields); });
    add("document", [&till](Fields fields) { setDocument(till, fields); });
    add("change", [&till](Fields fields) { changeDocument(till, fields); });
    add("action", [&till](Fields fields) { runAction(till, fields); });
    add("setting", &writeSetting);
    add("image", [imagesFolder](Fields fields) { storeImage(imagesFolder, fields); });
    add("init", [&till](Fields) { require(till.init(), QStringLiteral("init")); });
    add("deinit", [&till](Fields) { require(till.deinit(), QStringLiteral("deinit")); });
}
