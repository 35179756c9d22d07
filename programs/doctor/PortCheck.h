#pragma once

#include <doctor/Finding.h>

#include <QUrl>

namespace doctor {

/// Where the plug-in is to answer the display. A value type.
struct PluginPort
{
    QString address;    ///< "HttpServer:address"
    int port = 0;       ///< "ViewConnector:port"
    QString pluginName; ///< the plug-in's file, without its folder
    QUrl display;       ///< the address of the display
    QString proc = QStringLiteral("/proc");
};

/// Whether the plug-in can open its port, or has it open. The port is held for a moment, but not
/// listened on; who holds it is asked for a page, which the plug-in answers and forgets.
Findings checkPort(const PluginPort &plugin);

} // namespace doctor
