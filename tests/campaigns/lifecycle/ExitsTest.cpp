// The process exits while the plug-in is loaded, in each state that its client can be in.

#include "HostProcess.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

class Exits : public testing::TestWithParam<std::tuple<const char *, const char *>>
{
};

} // namespace

TEST_P(Exits, The_process_has_its_own_exit_code)
{
    const auto [way, state] = GetParam();
    HostProcess({QString::fromLatin1(state), QString::fromLatin1(way)}).expectToEndWell(1min);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, Exits,
    testing::Combine(testing::Values("return", "exit", "quick_exit", "drop-the-loader"),
                     testing::Values("never-started", "starting", "idle", "waiting", "retrying",
                                     "posting-in-vain", "connecting")),
    [](const testing::TestParamInfo<std::tuple<const char *, const char *>> &tested) {
        auto name = std::string(std::get<0>(tested.param)) + "_" + std::get<1>(tested.param);
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });
