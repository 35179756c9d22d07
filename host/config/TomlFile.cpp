#include <TomlFile.h>

#include "TomlKeys.h"

#include <ConfigError.h>

#include <QFile>
#include <QFileInfo>
#include <QVariantList>

#include <toml++/toml.h>

#include <sstream>
#include <string_view>

namespace {

constexpr qint64 maxFileBytes = 16'777'216; // many times the largest catalogue of a shop

QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QVariant toVariant(const toml::node &node);

QVariantList toList(const toml::array &array)
{
    QVariantList list;
    for (const auto &element : array)
        list.append(toVariant(element));
    return list;
}

QVariantMap toMap(const toml::table &table)
{
    QVariantMap map;
    for (const auto &[key, node] : table)
        map.insert(text(key.str()), toVariant(node));
    return map;
}

QVariant toVariant(const toml::node &node)
{
    if (const auto *string = node.as_string())
        return text(string->get());
    if (const auto *integer = node.as_integer())
        return QVariant::fromValue<qlonglong>(integer->get());
    if (const auto *number = node.as_floating_point())
        return number->get();
    if (const auto *boolean = node.as_boolean())
        return boolean->get();
    if (const auto *array = node.as_array())
        return toList(*array);
    if (const auto *table = node.as_table())
        return toMap(*table);

    std::ostringstream dateOrTime;
    node.visit([&](const auto &value) { dateOrTime << value; });
    return QString::fromStdString(dateOrTime.str());
}

} // namespace

QVariantMap readTomlFile(const QString &fileName)
{
    const auto unreadable = [&](const QString &why) {
        return ConfigError(fileName + QStringLiteral(": cannot be read: ") + why);
    };
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile()) // a pipe would be waited for
        throw unreadable(QStringLiteral("it is no file"));
    if (info.size() > maxFileBytes)
        throw unreadable(QStringLiteral("it is larger than %1 bytes").arg(maxFileBytes));
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw unreadable(file.errorString());

    const QByteArray content = file.readAll();
    const std::string_view toml(content.constData(), static_cast<std::size_t>(content.size()));
    if (const int line = lineOfDeepKey(toml); line != 0)
        throw ConfigError(fileName + QStringLiteral(":%1: a key has more than %2 parts; shorten it")
                                         .arg(line)
                                         .arg(maxKeyParts));
    try {
        return toMap(toml::parse(toml));
    } catch (const toml::parse_error &error) {
        const auto &place = error.source().begin;
        throw ConfigError(fileName + QStringLiteral(":%1:%2: ").arg(place.line).arg(place.column) +
                          text(error.description()));
    }
}
