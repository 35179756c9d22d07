#include <register/InspectorLink.h>

#include <register/AskedFor.h>

#include <support/Json.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <gtest/gtest.h>

namespace {

class InspectorLinkTest : public testing::Test
{
protected:
    support::LogCapture log;
    support::ScriptedServer inspector;
    AskedFor askedFor;
};

} // namespace

TEST_F(InspectorLinkTest, Posts_what_was_asked_for_and_when)
{
    const InspectorLink link(askedFor, inspector.url());
    Q_EMIT askedFor.asked("Configure", 12.5);
    Q_EMIT askedFor.asked("UpdateDocument", 13);
    ASSERT_TRUE(support::waitFor([&] { return inspector.requestCount() == 2; }));
    const auto requests = inspector.requests();
    EXPECT_EQ(requests[0].method, "POST");
    EXPECT_EQ(requests[0].path, "/asked");
    EXPECT_EQ(support::json(requests[0].body),
              support::json(R"({"type":"Configure","monotonicMs":12.5})"));
    EXPECT_EQ(support::json(requests[1].body),
              support::json(R"({"type":"UpdateDocument","monotonicMs":13})"));
}

TEST_F(InspectorLinkTest, Keeps_the_path_of_the_address)
{
    for (const auto *path : {"/display", "/display/"}) {
        auto url = inspector.url();
        url.setPath(path);
        const InspectorLink link(askedFor, url);
        const auto before = inspector.requestCount();
        Q_EMIT askedFor.asked("Content", 1);
        ASSERT_TRUE(support::waitFor([&] { return inspector.requestCount() > before; }));
        EXPECT_EQ(inspector.requests().constLast().path, "/display/asked");
    }
}

TEST_F(InspectorLinkTest, Drops_what_does_not_arrive_and_goes_on)
{
    inspector.goDown();
    const InspectorLink link(askedFor, inspector.url());
    Q_EMIT askedFor.asked("Configure", 1);
    ASSERT_TRUE(support::waitFor([&] { return log.textsOf("register").size() == 1; }));
    inspector.comeUp();
    Q_EMIT askedFor.asked("Content", 2);
    ASSERT_TRUE(support::waitFor([&] { return inspector.requestCount() == 1; }));
    EXPECT_EQ(support::json(inspector.requests().constFirst().body)["type"].toString(), "Content");
}
