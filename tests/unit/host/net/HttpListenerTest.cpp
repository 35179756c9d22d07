#include "HttpListener.h"

#include <support/DescriptorLimit.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>
#include <support/Wait.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace {

class HttpListenerTest : public testing::Test
{
protected:
    HttpListenerTest() { EXPECT_EQ(listener.open(QStringLiteral("127.0.0.1"), 0), ""); }

    HttpListener listener;
};

} // namespace

TEST_F(HttpListenerTest, Is_awaited_by_who_connects_until_that_is_accepted)
{
    EXPECT_FALSE(listener.isAwaited());
    const support::RawClient client(listener.port());
    EXPECT_TRUE(support::waitFor([&] { return listener.isAwaited(); }));
    const auto accepted = listener.accept();
    ASSERT_TRUE(accepted);
    EXPECT_FALSE(listener.lacksResources());
    EXPECT_FALSE(listener.isAwaited());
    ::close(accepted->socket);
}

TEST_F(HttpListenerTest, Lacks_nothing_if_nobody_is_there)
{
    EXPECT_FALSE(listener.accept());
    EXPECT_FALSE(listener.lacksResources());
}

TEST_F(HttpListenerTest, Lacks_resources_without_a_descriptor_until_there_is_one)
{
    const support::RawClient client(listener.port());
    ASSERT_TRUE(support::waitFor([&] { return listener.isAwaited(); }));
    {
        const support::DescriptorLimit none(static_cast<rlim_t>(support::lowestFreeDescriptor()));
        EXPECT_FALSE(listener.accept());
        EXPECT_TRUE(listener.lacksResources());
    }
    const support::RawClient later(listener.port());
    ASSERT_TRUE(support::waitFor([&] { return listener.isAwaited(); }));
    const auto accepted = listener.accept();
    ASSERT_TRUE(accepted);
    EXPECT_FALSE(listener.lacksResources());
    ::close(accepted->socket);
}

TEST_F(HttpListenerTest, Has_no_port_once_it_is_closed_and_leaves_the_standard_input_open)
{
    listener.close();
    EXPECT_EQ(listener.port(), 0);
    listener.close();
    EXPECT_NE(::fcntl(STDIN_FILENO, F_GETFD), -1);
}
