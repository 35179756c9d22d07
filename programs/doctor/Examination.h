#pragma once

#include <doctor/Diagnosis.h>
#include <doctor/DoctorOptions.h>

#include <functional>
#include <optional>

namespace doctor {

/// Runs all checks, one after the other, on the settings that have been loaded; nothing is changed.
/// `goesOn` is asked before each; nothing is returned once it says no.
std::optional<Diagnosis> examine(const DoctorOptions &options, const std::function<bool()> &goesOn);

} // namespace doctor
