#pragma once

#include <doctor/Finding.h>

namespace doctor {

/// Whether the plug-in's file can be loaded by this machine's Qt and is one for this host. Its code
/// is loaded and its object constructed, but not started.
Findings checkPlugin(const QString &fileName);

} // namespace doctor
