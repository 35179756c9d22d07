// Pictures that the host's threads announce while its main thread goes on asking for others.

#include "ImagesFixture.h"

#include <latch>
#include <map>
#include <thread>

namespace {

using ImageThreads = ImagesFixture;

constexpr int picturesOfEach = 300;

ImageId numbered(int number)
{
    return ImageId(ImageId::GoodsCode, QString::number(number));
}

TEST_F(ImageThreads, Each_awaited_picture_that_two_threads_announce_arrives_exactly_once)
{
    host.config().setValue("View.Style:showImages", true);
    connector->init();
    constexpr int announced = 2 * picturesOfEach;
    for (int number = 0; number < 2 * announced; ++number)
        know(numbered(number));
    for (int number = 0; number < announced; ++number)
        request(numbered(number));
    connector->takeSent();

    std::latch start(3);
    const auto announce = [&](int from) {
        start.arrive_and_wait();
        for (int number = from; number < from + picturesOfEach; ++number)
            Q_EMIT host.images().imageLoaded(Image(numbered(number), png));
    };
    {
        const std::jthread one(announce, 0);
        const std::jthread other(announce, picturesOfEach);
        start.arrive_and_wait();
        for (int number = announced; number < 2 * announced; ++number) {
            request(numbered(number)); // is awaited, too, and stays so
            QCoreApplication::processEvents();
        }
    }
    ASSERT_TRUE(support::waitFor([&] { return connector->sent.size() >= announced; }));
    QCoreApplication::processEvents();

    std::map<QString, int> arrivals;
    for (const auto &message : connector->sent)
        ++arrivals[message.data["id"].toMap()["value"].toString()];
    EXPECT_EQ(std::ssize(connector->sent), announced);
    EXPECT_EQ(std::ssize(arrivals), announced);
    EXPECT_EQ(connector->awaitingImages.lock()->size(), announced);
}

} // namespace
