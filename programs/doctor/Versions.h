#pragma once

#include <QString>

namespace doctor {

/// A line for each: this program, the system, and the libraries in use.
QString versionsText();

} // namespace doctor
