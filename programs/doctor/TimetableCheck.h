#pragma once

#include <doctor/Finding.h>

#include <chrono>

class Config;

namespace doctor {

/// The advertisements of the settings, "View.ADTimetable", in the order in which they are shown:
/// whether each has a place, a time and an address that can be fetched. Of the requests, each is
/// cut off behind the header of its answer; all together they take no longer than `patience`.
Findings checkTimetable(const Config &config, std::chrono::milliseconds patience);

} // namespace doctor
