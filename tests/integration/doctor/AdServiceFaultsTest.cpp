#include "DoctorFixture.h"

namespace {

/// What the ad service does wrong, and the step that must find it; none if the register bears it.
using Fault = std::pair<const char *, const char *>;

class AdServiceFaults : public DoctorFixture, public testing::WithParamInterface<Fault>
{
};

} // namespace

TEST_P(AdServiceFaults, Are_found_at_their_step)
{
    const auto &[fault, step] = GetParam();
    const auto display = startDisplay();
    const auto service = startAdService({"--fault", QString(fault)});
    const bool isBorne = QByteArray(step).isEmpty();
    const auto found = problems(examine(isBorne ? 0 : 1));
    ASSERT_EQ(found.size(), isBorne ? 0 : 1);
    EXPECT_EQ(found.value(0)["step"].toString(), step);
}

INSTANTIATE_TEST_SUITE_P(
    Each, AdServiceFaults,
    testing::Values(Fault{"refuse", "reach"}, Fault{"no-answer", "reach"},
                    Fault{"status", "status"}, Fault{"foreign-curve", "key"},
                    Fault{"explicit-curve", "key"}, Fault{"bad-key", "key"},
                    Fault{"iv-12", "vector"}, Fault{"iv-20", ""}, Fault{"empty", "body"},
                    Fault{"short-tag", "body"}, Fault{"endless", "body"},
                    Fault{"tampered", "decrypt"}, Fault{"not-json", "json"},
                    Fault{"not-object", "json"}, Fault{"missing-fields", "stream-address"},
                    Fault{"stream-as-text", "stream-address"}, Fault{"wrong-key", "stream"}),
    [](const auto &fault) { return QString(fault.param.first).replace('-', '_').toStdString(); });
