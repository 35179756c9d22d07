// Requests of the display: the acknowledgement, and the way to what handles them.

#include "PluginFixture.h"

#include "HttpRequest.h"

#include <support/RawClient.h>

#include <QJsonDocument>

#include <log4qt/logger.h>

namespace {

/// Notes which steps a request goes through, with the object that each is given.
class RoutingConnector : public RecordingConnector
{
public:
    void processRequest(const QJsonObject &request) override
    {
        note("request", request);
        RecordingConnector::processRequest(request);
    }
    void processResult(const QJsonObject &result) override
    {
        note("result", result);
        RecordingConnector::processResult(result);
    }
    void processGetImageRequest(const QJsonObject &request) override { note("getImage", request); }
    void processAdResult(const QJsonObject &result) override { note("adResult", result); }

    QStringList steps;
    QList<QJsonObject> objects;

private:
    void note(const QString &step, const QJsonObject &object)
    {
        steps.append(step);
        objects.append(object);
    }
};

class DisplayRequests : public PluginFixture
{
protected:
    DisplayRequests()
    {
        auto routing = std::make_unique<RoutingConnector>();
        routes = routing.get();
        connector = std::move(routing);
        connector->init();
    }

    HttpAnswer send(const QByteArray &content) const
    {
        return post(connector->server->port(), content);
    }

    RoutingConnector *routes;
};

struct Route
{
    const char *name;
    const char *content;
    QStringList steps;
};

const Route routeTable[] = {
    {"an image request",
     R"({"type":"request","name":"getImage","data":{"x":1}})",
     {"request", "getImage"}},
    {"text in another script",
     R"({"type":"request","name":"getImage","data":{"x":"чай ☕"}})",
     {"request", "getImage"}},
    {"an ad result", R"({"type":"result","name":"adResult","value":true})", {"result", "adResult"}},
    {"a result without a type", R"({"name":"adResult","value":true})", {"result", "adResult"}},
    {"a result whose type has a capital letter",
     R"({"type":"Request","name":"adResult"})",
     {"result", "adResult"}},
    {"a result whose type is a number", R"({"type":1,"name":"adResult"})", {"result", "adResult"}},
    {"a result whose type is null", R"({"type":null,"name":"adResult"})", {"result", "adResult"}},
    {"a result whose type has a space",
     R"({"type":"request ","name":"adResult"})",
     {"result", "adResult"}},
    {"an image request without data",
     R"({"type":"request","name":"getImage"})",
     {"request", "getImage"}},
    {"an ad result without a value",
     R"({"type":"result","name":"adResult"})",
     {"result", "adResult"}},
    {"a result under the type of a request",
     R"({"type":"request","name":"adResult","value":true})",
     {"request"}},
    {"an image request without a type", R"({"name":"getImage","data":{}})", {"result"}},
    {"an image request under the type of a result",
     R"({"type":"result","name":"getImage"})",
     {"result"}},
    {"a request whose name has a capital letter",
     R"({"type":"request","name":"GetImage"})",
     {"request"}},
    {"a result whose name has a capital letter",
     R"({"type":"result","name":"AdResult"})",
     {"result"}},
    {"a request without a name", R"({"type":"request"})", {"request"}},
    {"a request whose name is a number", R"({"type":"request","name":1})", {"request"}},
    {"a result whose name is a number", R"({"type":"result","name":1})", {"result"}},
    {"a result whose name is an object", R"({"type":"result","name":{}})", {"result"}},
    {"an unknown request", R"({"type":"request","name":"unknown"})", {"request"}},
    {"an unknown result", R"({"type":"result","name":"unknown"})", {"result"}},
    {"an empty object", "{}", {"result"}},
};

TEST_F(DisplayRequests, Each_is_routed_by_its_type_and_name_with_the_whole_object)
{
    for (const auto &row : routeTable) {
        SCOPED_TRACE(row.name);
        routes->steps.clear();
        routes->objects.clear();
        EXPECT_EQ(send(row.content).status, 200);
        EXPECT_EQ(routes->steps, row.steps);
        for (const auto &object : routes->objects)
            EXPECT_EQ(object, QJsonDocument::fromJson(row.content).object());
    }
}

TEST_F(DisplayRequests, What_is_no_JSON_object_is_an_empty_result)
{
    for (const char *content : {"", "no JSON", "[1,2]", "\"text\"", "1", "null",
                                "{\"type\":", "{\"type\":\"request\"} {}", "\xff\xfe"}) {
        SCOPED_TRACE(content);
        routes->steps.clear();
        routes->objects.clear();
        EXPECT_EQ(send(content).status, 200);
        EXPECT_EQ(routes->steps, QStringList{"result"});
        EXPECT_EQ(routes->objects, QList{QJsonObject()});
    }
}

TEST_F(DisplayRequests, Each_is_acknowledged_in_the_same_way_whatever_it_holds)
{
    QList<QByteArray> contents{"", "no JSON", "[1,2]", QByteArray(100'000, '[')};
    for (const auto &row : routeTable)
        contents.append(row.content);
    for (const auto &content : contents) {
        const auto answer = send(content);
        EXPECT_EQ(answer.status, 200) << content.toStdString();
        EXPECT_EQ(answer.reason, "OK");
        EXPECT_EQ(answer.contentType, "application/json");
        EXPECT_EQ(answer.body, QByteArray());
    }
}

TEST_F(DisplayRequests, Method_path_query_and_header_make_no_difference)
{
    const QByteArray body = R"({"name":"adResult"})";
    const QByteArray tail =
        " HTTP/1.1\r\nHost: x\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n";
    const QByteArray requests[] = {
        "GET /" + tail + "\r\n" + body,
        "PUT /a/b?c=d&e" + tail + "\r\n" + body,
        "DELETE *" + tail + "\r\n" + body,
        "PATCH /" + tail + "Content-Type: text/plain\r\n\r\n" + body,
        "POST /updateDocument" + tail + "Accept: image/png\r\nX-Any: thing\r\n\r\n" + body,
    };
    for (const auto &request : requests) {
        SCOPED_TRACE(request.toStdString());
        routes->steps.clear();
        support::RawClient client(connector->server->port());
        client.send(request);
        const auto answer = client.answer();
        EXPECT_TRUE(answer.header.startsWith("HTTP/1.1 200 OK\r\n"));
        EXPECT_TRUE(answer.header.contains("Content-Type: application/json"));
        EXPECT_EQ(answer.body, QByteArray());
        EXPECT_EQ(routes->steps, (QStringList{"result", "adResult"}));
    }
}

TEST_F(DisplayRequests, A_GET_without_a_body_is_acknowledged_like_any_other)
{
    support::RawClient client(connector->server->port());
    client.send("GET / HTTP/1.1\r\nHost: x\r\n\r\n");
    const auto answer = client.answer();
    EXPECT_TRUE(answer.header.startsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_TRUE(answer.header.contains("Content-Type: application/json"));
    EXPECT_TRUE(answer.header.contains("Content-Length: 0"));
    EXPECT_EQ(answer.body, QByteArray());
    EXPECT_EQ(routes->steps, QStringList{"result"});
}

TEST_F(DisplayRequests, Each_is_logged_once_without_its_content_and_nothing_else_is)
{
    ASSERT_TRUE(waitUntilAllSent());
    const auto before = log.textsOf("viewconnector");
    send("{}");
    send("no JSON");
    send(R"({"type":"request","name":"unknown"})");
    EXPECT_EQ(log.textsOf("viewconnector").mid(before.size()),
              QStringList(3, "Получено сообщение"));
    EXPECT_EQ(log.lines().constLast().level, QtInfoMsg);
}

/// A server that notes when it is told to answer, and with what.
class JournalingServer : public HttpServer
{
public:
    JournalingServer(QStringList &journal, const support::LogCapture &log)
        : HttpServer(0, HttpServerOptions()), m_journal(journal), m_log(log)
    {
    }
    void sendResponse(const ResponseHeader &header, const QByteArray &body) override
    {
        m_journal.append(m_log.textsOf("viewconnector"));
        m_journal.append(QString("answer %1 %2 HTTP/%3.%4 %5 %6 bytes")
                             .arg(header.status())
                             .arg(header.reason())
                             .arg(header.majorVersion())
                             .arg(header.minorVersion())
                             .arg(header.contentType())
                             .arg(body.size()));
    }

private:
    QStringList &m_journal;
    const support::LogCapture &m_log;
};

TEST_F(DisplayRequests, The_line_is_logged_then_the_answer_given_then_the_request_acted_on)
{
    ASSERT_TRUE(waitUntilAllSent());
    const QStringList before = log.textsOf("viewconnector");
    connector->server = QSharedPointer<JournalingServer>::create(routes->steps, log);
    connector->requestReceived(RequestHeader(), R"({"name":"adResult"})");
    EXPECT_EQ(routes->steps.mid(before.size()),
              (QStringList{"Получено сообщение", "answer 200 OK HTTP/1.1 application/json 0 bytes",
                           "result", "adResult"}));
}

TEST_F(DisplayRequests, They_are_handled_on_the_plugins_thread)
{
    class ThreadNotingConnector : public RecordingConnector
    {
    public:
        void processResult(const QJsonObject &) override { handledOn = QThread::currentThread(); }
        QThread *handledOn = nullptr;
    };
    ThreadNotingConnector noting;
    noting.init();
    post(noting.server->port(), "{}");
    EXPECT_EQ(noting.handledOn, QThread::currentThread());
}

TEST_F(DisplayRequests, After_the_end_they_no_longer_reach_the_plugin)
{
    connector->deinit();
    EXPECT_EQ(send(R"({"name":"adResult"})").status, 503);
    EXPECT_TRUE(routes->steps.isEmpty());
}

} // namespace
