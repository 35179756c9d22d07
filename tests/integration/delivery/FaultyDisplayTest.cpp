#include "RunningPlugin.h"

#include <QElapsedTimer>

using namespace std::chrono_literals;
using support::ScriptedAnswer;
using Type = view::Message::Type;

namespace {

struct Fault
{
    const char *name;
    ScriptedAnswer answer;
};

class FaultyDisplay : public RunningPlugin, public testing::WithParamInterface<Fault>
{
};

} // namespace

TEST_P(FaultyDisplay, Gets_the_same_message_again_until_it_accepts_it_and_then_no_more)
{
    letConfigurationPass();
    display.answerNext({GetParam().answer, GetParam().answer});
    plugin->addMessage(numbered(Type::Content, 1));

    ASSERT_TRUE(waitForRequests(1 + 3)) << "attempts: " << display.requestCount() - 1;
    support::letPass(4 * interval);
    EXPECT_EQ(bodies(1), (QByteArrayList{numberedBody(1), numberedBody(1), numberedBody(1)}));
}

TEST_P(FaultyDisplay, Never_keeps_the_registers_thread_waiting)
{
    letConfigurationPass();
    display.answer(GetParam().answer);
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 10'000; ++i)
        plugin->addMessage(numbered(Type::UpdateDocument, i));
    EXPECT_LT(timer.elapsed(), 1000); // less than one post that times out

    // The last of them may go with an older one that is being posted; one that comes later may not.
    display.answer(ScriptedAnswer::ok());
    support::letPass(1500ms);
    plugin->addMessage(numbered(Type::UpdateDocument, 10'000));
    EXPECT_TRUE(
        support::waitFor([&] { return display.requests().last().body == numberedBody(10'000); }));
}

INSTANTIATE_TEST_SUITE_P(
    Answers, FaultyDisplay,
    testing::Values(Fault{"Status500", ScriptedAnswer::status(500)},
                    Fault{"Status404", ScriptedAnswer::status(404)},
                    Fault{"Redirect302", ScriptedAnswer::status(302)},
                    Fault{"Garbage", ScriptedAnswer::garbage()},
                    Fault{"BlackHole", ScriptedAnswer::blackHole()},
                    Fault{"ClosedWithoutAnswer", ScriptedAnswer::closed()},
                    Fault{"Truncated", ScriptedAnswer::truncated()},
                    Fault{"DrippingBody", ScriptedAnswer::dripping(50ms)},
                    Fault{"EndlessBody", ScriptedAnswer::endlessBody()},
                    Fault{"EndlessHeader", ScriptedAnswer::endlessHeader()},
                    Fault{"EndlessInterim", ScriptedAnswer::endlessInterim(50ms)}),
    [](const testing::TestParamInfo<Fault> &tested) { return std::string(tested.param.name); });
