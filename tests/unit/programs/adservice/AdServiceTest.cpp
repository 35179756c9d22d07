#include "AdServiceFixture.h"

#include "Multipart.h"
#include "Subscriber.h"

#include <support/Json.h>

#include <QFile>
#include <QRegularExpression>
#include <QTcpServer>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using support::RawClient;

namespace {

/// The answer that arrived, in the form in which it was given.
Answer received(const RawClient::Answer &answer)
{
    Answer result{.status = answer.status, .body = answer.body};
    for (const auto &line : answer.header.split('\n').mid(1))
        result.fields.append(
            {line.left(line.indexOf(':')), line.mid(line.indexOf(':') + 1).trimmed()});
    return result;
}

} // namespace

TEST_F(AdServiceFixture, Tells_a_subscriber_where_the_stream_is)
{
    const Subscriber subscriber;
    options.stream = 3;
    QJsonObject stream;
    int port = 0;
    const auto lines = printed([&] {
        const AdService service(options);
        port = service.port();
        const auto answer = ask(service, RawClient::request("/any/path", subscriber.request()));
        stream = support::json(subscriber.decrypt(received(answer)));
    });
    const auto address = QString("127.0.0.1:%1").arg(port);
    EXPECT_EQ(stream, (QJsonObject{{"listen", address}, {"stream", 3}, {"master", "key"}}));
    EXPECT_EQ(lines, QStringList("Subscription    answered: stream 3 at " + address.toUtf8()));
}

TEST_F(AdServiceFixture, Announces_another_address_when_told_to)
{
    const Subscriber subscriber;
    options.listen = "ads.example:99";
    QByteArray plaintext;
    printed([&] {
        const AdService service(options);
        plaintext = subscriber.decrypt(
            received(ask(service, RawClient::request("/", subscriber.request()))));
    });
    EXPECT_EQ(support::json(plaintext)["listen"], "ads.example:99");
}

TEST_F(AdServiceFixture, Answers_late_when_told_to)
{
    options.answerAfter = 200ms;
    const auto begin = std::chrono::steady_clock::now();
    int status = 0;
    printed([&] {
        const AdService service(options);
        status = ask(service, RawClient::request("/", Subscriber().request())).status;
    });
    EXPECT_EQ(status, 200);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 200ms);
}

TEST_F(AdServiceFixture, Shows_the_stream_to_those_who_know_its_key)
{
    options.key = "a key & more=1";
    options.streamTime = 1s;
    options.frameTime = 100ms;
    QByteArray answer;
    const auto lines = printed([&] {
        const AdService service(options);
        RawClient client(service.port());
        client.send(get("/streams/1?key=a%20key%20%26%20more%3D1"));
        client.waitForClose();
        answer = client.received();
    });
    const auto headerSize = answer.indexOf("\r\n\r\n");
    const auto header = answer.left(headerSize);
    EXPECT_TRUE(header.startsWith("HTTP/1.1 200 ")) << header.toStdString();
    const QRegularExpression type(
        "\r\nContent-Type: multipart/x-mixed-replace; boundary=(\\w+)(\r\n|$)");
    const auto boundary = type.match(QString(header)).captured(1).toUtf8();
    const auto message = Multipart::parse(answer.mid(headerSize + 4), boundary);
    ASSERT_TRUE(message) << header.toStdString();
    EXPECT_TRUE(message->isClosed);
    EXPECT_GE(message->jpegs.size(), 2);
    EXPECT_EQ(lines, (QStringList{"Stream          started",
                                  "Stream          ended, pictures: " +
                                      QByteArray::number(message->jpegs.size())}));
}

TEST_F(AdServiceFixture, Refuses_what_is_not_there_and_says_so)
{
    struct Refusal
    {
        const char *request;
        int status;
        const char *reason;
    };
    static constexpr Refusal refusals[] = {
        {"GET /streams/1?key=Key", 403, "wrong key"},
        {"GET /streams/1?key=", 403, "wrong key"},
        {"GET /streams/1", 403, "wrong key"},
        {"GET /streams/2?key=key", 404, "there is no such stream"},
        {"GET /streams/01?key=key", 404, "there is no such stream"},
        {"GET /streams/?key=key", 404, "there is no such stream"},
        {"GET /ads/none.svg", 404, "there is no such advertisement"},
        {"GET /ads/", 404, "there is no such advertisement"},
        {"GET /", 404, "there is nothing here"},
        {"POST /streams/1?key=key", 405, "only GET is answered here"},
        {"POST /ads/none.svg", 405, "only GET is answered here"},
        {"DELETE /ads/none.svg", 405, "only GET is answered here"},
        {"PUT /", 405, "only POST is answered here"},
        {"POST /", 400, "the body is no JSON object"},
    };
    for (const auto &[request, status, reason] : refusals) {
        SCOPED_TRACE(request);
        RawClient::Answer answer;
        const auto lines = printed([&, text = request] {
            const AdService service(options);
            answer = ask(service, QByteArray(text) + " HTTP/1.0\r\n\r\n");
        });
        EXPECT_EQ(answer.status, status);
        EXPECT_EQ(answer.body, QByteArray(reason) + '\n');
        EXPECT_EQ(lines, QStringList("Refused         " + QByteArray(request).split('?').first() +
                                     ": " + QByteArray::number(status) + ' ' + reason));
        EXPECT_EQ(answer.header.contains("\r\nAllow: "), status == 405)
            << answer.header.toStdString();
    }
}

TEST_F(AdServiceFixture, Prints_a_refused_path_in_one_line)
{
    const auto lines = printed([&] {
        const AdService service(options);
        ask(service, get("/%0aStream%20started%1b"));
    });
    EXPECT_EQ(lines, QStringList(
                         "Refused         GET /%0AStream%20started%1B: 404 there is nothing here"));
}

TEST_F(AdServiceFixture, Serves_the_advertisements_of_its_folder_alone)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("хлеб.svg"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<svg/>");
    file.close();
    options.adsFolder = folder.path();
    const AdService service(options);

    const auto found = ask(service, get("/ads/%D1%85%D0%BB%D0%B5%D0%B1.svg"));
    EXPECT_EQ(found.status, 200);
    EXPECT_EQ(found.body, "<svg/>");
    EXPECT_TRUE(found.header.contains("\r\nContent-Type: image/svg+xml\r\n"))
        << found.header.toStdString();
    for (const auto *path :
         {"/ads/../../etc/passwd", "/ads/%2e%2e/%2e%2e/etc/passwd", "/ads//etc/passwd",
          "/ads/%2fetc%2fpasswd", "/ads/.", "/ads/..", "/ads/%00"}) {
        int status = 0;
        printed([&] { status = ask(service, get(path)).status; });
        EXPECT_EQ(status, 404) << path;
    }
}

TEST_F(AdServiceFixture, Misbehaves_as_it_is_told_and_says_so)
{
    const Subscriber subscriber;
    const std::pair<Fault, const char *> lines[] = {
        {Fault::Refuse, "Subscription    left without an answer (refuse)"},
        {Fault::Status, "Subscription    answered with a fault (status)"},
        {Fault::Tampered, "Subscription    answered with a fault (tampered)"},
    };
    for (const auto &[fault, line] : lines) {
        SCOPED_TRACE(line);
        options.fault = fault;
        Answer answer;
        EXPECT_EQ(printed([&] {
                      const AdService service(options);
                      RawClient client(service.port());
                      client.send(RawClient::request("/", subscriber.request()));
                      client.waitForClose();
                      answer = received(client.answer(0ms));
                  }),
                  QStringList(line));
        EXPECT_EQ(answer.status, fault == Fault::Refuse ? 0 : fault == Fault::Status ? 500 : 200);
        EXPECT_EQ(subscriber.decrypt(answer), "");
    }
}

TEST_F(AdServiceFixture, Tells_why_it_does_not_listen)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    options.port = other.serverPort();
    const AdService service(options);
    EXPECT_FALSE(service.isListening());
    EXPECT_EQ(service.errorString(), qt_error_string(EADDRINUSE));
}
