#include <common/DefaultPlugin.h>

#include <QCoreApplication>

QString defaultPluginFile()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../plugins/viewconnector.so");
}
