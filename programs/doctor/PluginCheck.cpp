#include <doctor/PluginCheck.h>

#include <PluginLoader.h>

#include <QFileInfo>
#include <QLibraryInfo>
#include <QPluginLoader>

namespace doctor {

namespace {

const auto check = QStringLiteral("plugin");

/// Of metadata, which hold the version as 0x060400; empty if they hold none.
QString qtVersionOf(const QJsonObject &metaData)
{
    constexpr int majorShift = 16;
    constexpr int minorShift = 8;
    constexpr int byte = 0xFF;
    const int version = metaData[u"version"].toInt();
    return version == 0 ? QString()
                        : QStringLiteral("%1.%2")
                              .arg(version >> majorShift & byte)
                              .arg(version >> minorShift & byte);
}

Text remedyFor(const QString &problem)
{
    if (problem.contains(QStringLiteral("incompatible Qt library")) ||
        problem.contains(QStringLiteral("version `Qt_")))
        return Text("Плагин собран с другой версией Qt, здесь Qt %1: установите плагин для этой "
                    "версии системы.",
                    "The plug-in was built with another version of Qt, here is Qt %1: install the "
                    "plug-in for this version of the system.")
            .with(QLibraryInfo::version().toString());
    if (problem.contains(QStringLiteral("cannot open shared object file")))
        return {"Не хватает библиотеки, названной выше: переустановите пакеты "
                "viewconnector-plugin и libregisterhost0.",
                "The library named above is missing: install the packages "
                "viewconnector-plugin and libregisterhost0 again."};
    if (problem.contains(QStringLiteral("undefined symbol")))
        return {"Плагин и программа кассы разных версий: установите их вместе.",
                "Plug-in and register are of different versions: install them together."};
    return {"Укажите файл плагина: --plugin ФАЙЛ, или переустановите пакет viewconnector-plugin.",
            "Give the plug-in's file: --plugin FILE, or install the package viewconnector-plugin "
            "again."};
}

} // namespace

Findings checkPlugin(const QString &fileName)
{
    const auto file = QFileInfo(fileName).absoluteFilePath();
    QJsonObject details{{QStringLiteral("file"), QFileInfo(file).canonicalFilePath()},
                        {QStringLiteral("runningQt"), QLibraryInfo::version().toString()}};
    if (!QFileInfo::exists(file))
        details.insert(QStringLiteral("file"), file);
    if (QFileInfo::exists(file) && !QFileInfo(file).isReadable())
        return {failed(check,
                       Text("Плагин %1 не читается: нет прав.",
                            "The plug-in %1 cannot be read: no permission.")
                           .with(file),
                       Text("Дайте право чтения: sudo chmod a+r '%1'.",
                            "Allow reading it: sudo chmod a+r '%1'.")
                           .with(file),
                       details)};

    const auto metaData = QPluginLoader(file).metaData();
    if (const auto version = qtVersionOf(metaData); !version.isEmpty())
        details.insert(QStringLiteral("pluginQt"), version);
    if (const auto interface = metaData[u"IID"].toString(); !interface.isEmpty())
        details.insert(QStringLiteral("interface"), interface);
    try {
        const PluginLoader plugin(file);
    } catch (const PluginError &error) {
        const auto problem = QString::fromUtf8(error.what());
        return {failed(
            check,
            Text("Плагин не загружается: %1.", "The plug-in cannot be loaded: %1.").with(problem),
            remedyFor(problem), details)};
    }
    return {ok(check,
               Text("Плагин %1 загружается: собран с Qt %2, здесь Qt %3.",
                    "The plug-in %1 can be loaded: built with Qt %2, here is Qt %3.")
                   .with(details[u"file"].toString(), qtVersionOf(metaData),
                         QLibraryInfo::version().toString()),
               details)};
}

} // namespace doctor
