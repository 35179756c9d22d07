#pragma once

#include <QString>

/// The plug-in of the program's own build: "viewconnector.so" in the folder "plugins" beside the
/// program's.
QString defaultPluginFile();
