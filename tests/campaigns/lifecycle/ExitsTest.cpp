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

class EncryptedExits : public testing::TestWithParam<const char *>
{
};

/// The handshake that is under way is at another point each time.
TEST_P(EncryptedExits, The_process_has_its_own_exit_code)
{
    for (int exit = 0; exit < 10 && !HasFailure(); ++exit)
        HostProcess({QStringLiteral("encrypting"), QString::fromLatin1(GetParam())})
            .expectToEndWell(1min);
}

INSTANTIATE_TEST_SUITE_P(Ways, EncryptedExits,
                         testing::Values("return", "exit", "quick_exit", "drop-the-loader"),
                         [](const auto &tested) {
                             auto name = std::string(tested.param);
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

INSTANTIATE_TEST_SUITE_P(
    Ways, Exits,
    testing::Combine(testing::Values("return", "exit", "quick_exit", "drop-the-loader"),
                     testing::Values("never-started", "starting", "idle", "waiting", "retrying",
                                     "posting-in-vain", "connecting", "subscribing")),
    [](const testing::TestParamInfo<std::tuple<const char *, const char *>> &tested) {
        auto name = std::string(std::get<0>(tested.param)) + "_" + std::get<1>(tested.param);
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });
