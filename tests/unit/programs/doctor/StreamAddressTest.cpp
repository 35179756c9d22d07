#include <doctor/StreamAddress.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

using namespace doctor;

TEST(StreamAddress, Is_that_of_the_streams_pictures)
{
    EXPECT_EQ(streamAddress("host:1", "3", "a b"), QUrl("http://host:1/streams/3?key=a b"));
}

TEST(StreamAddress, Is_made_of_an_advertisement_that_is_a_stream)
{
    EXPECT_EQ(fetchedAddress(QUrl("ads://host:1?stream=3&key=K")),
              QUrl("http://host:1/streams/3?key=K"));
    EXPECT_EQ(fetchedAddress(QUrl("https://host/ad.svg?x=1")), QUrl("https://host/ad.svg?x=1"));
}
