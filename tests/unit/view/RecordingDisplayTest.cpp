#include <support/RecordingDisplay.h>

#include <RestClient.h>

#include <gtest/gtest.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>

namespace {

class Display : public testing::Test
{
protected:
    int post(const QString &path, const QByteArray &body = "{}")
    {
        return client.post(QUrl(display.url() + path), body, {});
    }

    support::LogCapture log;
    support::RecordingDisplay display;
    RestClient client;
};

TEST_F(Display, It_remembers_path_and_body_of_what_it_accepts)
{
    EXPECT_EQ(post("/content", "{\"a\":1}"), 0);
    EXPECT_EQ(display.paths(), QStringList{"/content"});
    ASSERT_EQ(display.requests().size(), 1);
    EXPECT_EQ(display.requests().constFirst().body, (QJsonObject{{"a", 1}}));
}

TEST_F(Display, It_answers_the_status_that_is_set)
{
    display.setStatus(404);
    EXPECT_EQ(post("/content"), 404);
    EXPECT_EQ(display.paths(), QStringList{"/content"});
}

TEST_F(Display, It_goes_down_and_comes_back_at_the_same_port)
{
    const int port = display.port();
    display.goDown();
    EXPECT_NE(post("/content"), 0);
    display.comeBack();
    EXPECT_EQ(display.port(), port);
    EXPECT_EQ(post("/configure"), 0);
    EXPECT_EQ(display.paths(), QStringList{"/configure"});
}

} // namespace
