#include <PluginLoader.h>

#include <BasicPlugin.h>
#include <DocumentWatcher.h>

#include <QFileInfo>
#include <QJsonObject>

PluginLoader::PluginLoader(const QString &fileName)
    : m_library(QFileInfo(fileName).absoluteFilePath())
{
    try {
        load(fileName);
    } catch (...) {
        unload(); // otherwise the next object would stay when its loader goes
        throw;
    }
}

PluginLoader::~PluginLoader()
{
    unload();
}

void PluginLoader::load(const QString &fileName)
{
    if (!QFileInfo::exists(fileName))
        throw PluginError(QStringLiteral("%1: no such plug-in file").arg(fileName));

    const auto interface = m_library.metaData().value(QStringLiteral("IID")).toString();
    if (interface.isEmpty())
        throw PluginError(
            QStringLiteral("%1: not a Qt plug-in: %2").arg(fileName, m_library.errorString()));
    if (interface != QLatin1String(interfaceId))
        throw PluginError(QStringLiteral("%1: its interface is \"%2\", expected \"%3\"")
                              .arg(fileName, interface, QLatin1String(interfaceId)));

    m_object = m_library.instance();
    if (m_object == nullptr)
        throw PluginError(
            QStringLiteral("%1: cannot be loaded: %2").arg(fileName, m_library.errorString()));

    m_plugin = dynamic_cast<BasicPlugin *>(m_object);
    if (m_plugin == nullptr)
        throw PluginError(
            QStringLiteral("%1: its object is not a plug-in of this host").arg(fileName));
    m_documentWatcher = dynamic_cast<DocumentWatcher *>(m_object);
}

void PluginLoader::unload()
{
    m_documentWatcher = nullptr;
    m_plugin = nullptr;
    m_object = nullptr;
    m_library.unload();
}
