#include "AdServiceProcess.h"

#include <support/Json.h>
#include <support/RawClient.h>

#include <QElapsedTimer>
#include <QJsonArray>

#include <csignal>

using support::RawClient;

namespace {

QByteArray streamRequest(const QByteArray &key)
{
    return "GET /streams/1?key=" + key + " HTTP/1.1\r\nHost: localhost\r\n\r\n";
}

} // namespace

TEST(AdServiceProgram, Lets_a_subscriber_of_other_making_see_its_stream)
{
    AdServiceProcess service({"--stream", "7", "--key", "ключ + 1&2=3", "--frame-ms", "20"});
    Process subscriber(QStringLiteral(SUBSCRIBER),
                       {"http://" + service.address() + "/subscribe", "4"});
    ASSERT_EQ(subscriber.exitCode(), 0) << subscriber.errors().toStdString();
    EXPECT_EQ(support::json(subscriber.output()),
              (QJsonObject{{"keySize", 32},
                           {"ivSize", 16},
                           {"announcement", QJsonObject{{"listen", service.address()},
                                                        {"stream", 7},
                                                        {"master", "ключ + 1&2=3"}}},
                           {"streamType", "multipart/x-mixed-replace"},
                           {"pictureTypes", QJsonArray{"image/jpeg"}},
                           {"jpegs", 4},
                           {"differentPictures", 4},
                           {"wrongKeyStatus", 403}}));
}

TEST(AdServiceProgram, Tells_each_event_and_when_a_viewer_leaves)
{
    AdServiceProcess service({"--frame-ms", "20"});
    Process subscriber(QStringLiteral(SUBSCRIBER), {"http://" + service.address(), "2"});
    EXPECT_EQ(subscriber.exitCode(), 0) << subscriber.errors().toStdString();
    ASSERT_TRUE(service.waitForOutputLines(5)) << service.output().toStdString();

    auto events = service.events();
    EXPECT_EQ(events.takeFirst(), "Subscription    answered: stream 1 at " + service.address());
    EXPECT_EQ(events.takeFirst(), "Stream          started");
    events.sort(); // the end of the stream is noticed at its next picture
    EXPECT_EQ(events[0], "Refused         GET /streams/1: 403 wrong key");
    EXPECT_TRUE(events[1].startsWith("Stream          ended, pictures: "))
        << events[1].toStdString();
}

TEST(AdServiceProgram, Ends_in_order_and_at_once_while_a_stream_runs)
{
    for (const int number : {SIGTERM, SIGINT}) {
        SCOPED_TRACE(number);
        AdServiceProcess service({"--key", "k", "--frame-ms", "3600000"});
        RawClient viewer(service.port());
        viewer.send(streamRequest("k"));
        ASSERT_TRUE(support::waitFor([&] { return viewer.received().contains("image/jpeg"); }));

        QElapsedTimer time;
        time.start();
        service.signal(number);
        EXPECT_EQ(service.exitCode(), 0);
        EXPECT_LT(time.elapsed(), 2000);
        EXPECT_TRUE(viewer.waitForClose());
        EXPECT_EQ(service.events().last(), "Stream          ended, pictures: 1");
        EXPECT_EQ(service.errors(), "");
    }
}

TEST(AdServiceProgram, Accepts_and_never_answers_when_told_to)
{
    AdServiceProcess service({"--fault", "no-answer"});
    RawClient client(service.port());
    client.send(RawClient::request("/", "{}"));
    ASSERT_TRUE(service.waitForOutputLines(2));
    EXPECT_EQ(service.events(), QStringList("Subscription    left without an answer (no-answer)"));
    EXPECT_TRUE(client.isConnected());
    service.signal(SIGTERM);
    EXPECT_EQ(service.exitCode(), 0);
    EXPECT_EQ(client.received(), "");
}
