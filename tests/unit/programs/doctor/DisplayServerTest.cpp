#include <doctor/DisplayServer.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

using namespace doctor;

TEST(DisplayServer, Is_the_default_for_an_empty_setting)
{
    EXPECT_EQ(displayServer({}), QUrl("http://127.0.0.1:38080"));
    EXPECT_EQ(displayServer("http://a:1"), QUrl("http://a:1"));
}

TEST(DisplayServer, Has_the_port_of_its_scheme_unless_one_is_given)
{
    EXPECT_EQ(portOf(QUrl("http://a")), 80);
    EXPECT_EQ(portOf(QUrl("https://a")), 443);
    EXPECT_EQ(portOf(QUrl("http://a:81")), 81);
    EXPECT_EQ(portOf(QUrl("ftp://a")), -1);
}

TEST(DisplayServer, Is_on_this_machine_or_not)
{
    for (const auto *url :
         {"http://127.0.0.1", "http://127.1.2.3:5", "http://localhost", "http://[::1]:5"})
        EXPECT_TRUE(isThisMachine(QUrl(url))) << url;
    for (const auto *url : {"http://203.0.113.1", "http://display.example", "http://"})
        EXPECT_FALSE(isThisMachine(QUrl(url))) << url;
}
