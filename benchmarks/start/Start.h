#pragma once

#include <QJsonObject>

namespace bench {

/// The settings of the sample shop with another display, and with or without its ad service.
enum class Ads { None, Service };

/**
 * Loads the plug-in into this process, as a host does, and starts it, until the display has its
 * first message. Returns how long each step took, and how much memory there was before and after.
 *
 * Thread: the main thread, once in a process. Errors: PluginError, ConfigError, std::system_error,
 * and std::runtime_error if the message does not arrive.
 * Shut-down: ends the plug-in before it returns.
 */
QJsonObject measureStart(Ads ads);

} // namespace bench
