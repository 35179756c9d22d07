#pragma once

#include <QString>
#include <QUrl>

namespace doctor {

/// The address of the display as the plug-in takes it from "ViewConnector:server".
QUrl displayServer(const QString &setting);

/// The port of an address, given or that of its scheme; -1 for another scheme.
int portOf(const QUrl &url);

/// Whether an address leads to this machine. Asks no name server: of names only "localhost" does.
bool isThisMachine(const QUrl &url);

} // namespace doctor
