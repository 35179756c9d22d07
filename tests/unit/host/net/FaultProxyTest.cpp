#include <support/FaultProxy.h>

#include <support/PrintQt.h>
#include <support/RawClient.h>
#include <support/ScriptedServer.h>

#include <curl/curl.h>
#include <gmock/gmock.h>

#include <cerrno>
#include <memory>
#include <string>

namespace {

using namespace std::chrono_literals;
using support::FaultProxy;
using support::RawClient;
using testing::AnyOf;
using Fault = FaultProxy::Fault;

const QByteArray question = RawClient::request("/configure", "question");

class FaultProxies : public testing::Test
{
protected:
    int ask(RawClient &client)
    {
        client.send(question);
        return client.answer().status;
    }

    support::ScriptedServer server;
    FaultProxy proxy{server.port()};
};

} // namespace

TEST_F(FaultProxies, Pass_everything_on_while_nothing_is_wrong)
{
    server.answer(support::ScriptedAnswer::ok(QByteArray(1024 * 1024, 'x')));
    RawClient client(proxy.port());
    const QByteArray body(3 * 1024 * 1024, 'y');
    for (int i = 0; i < 2; ++i) {
        client.send(RawClient::request("/image", body));
        const auto answer = client.answer();
        EXPECT_EQ(answer.status, 200);
        EXPECT_EQ(answer.body.size(), 1024 * 1024);
    }
    ASSERT_EQ(server.requestCount(), 2);
    EXPECT_EQ(server.requests().last().body, body);
    EXPECT_EQ(proxy.connectionCount(), 1);
    EXPECT_EQ(server.connectionCount(), 1);
}

TEST_F(FaultProxies, Close_what_the_server_closes)
{
    server.answer(support::ScriptedAnswer::truncated());
    RawClient client(proxy.port());
    client.send(question);
    EXPECT_TRUE(client.waitForClose());
    EXPECT_TRUE(client.received().endsWith("only this"));
}

TEST_F(FaultProxies, Swallow_what_comes_until_they_are_healed)
{
    RawClient before(proxy.port());
    EXPECT_EQ(ask(before), 200);
    proxy.strike(Fault::Swallow);
    EXPECT_TRUE(before.waitForClose());

    RawClient during(proxy.port());
    EXPECT_TRUE(during.isConnected());
    during.send(question);
    EXPECT_FALSE(during.waitForClose(100ms));
    EXPECT_EQ(during.received(), QByteArray());

    proxy.heal();
    EXPECT_TRUE(during.waitForClose());
    EXPECT_EQ(server.requestCount(), 1);
    EXPECT_EQ(proxy.connectionCount(), 2);
    RawClient after(proxy.port());
    EXPECT_EQ(ask(after), 200);
}

TEST_F(FaultProxies, Reset_a_connection_while_a_large_body_is_on_its_way)
{
    proxy.strike(Fault::Reset);
    const QByteArray body(64 * 1024 * 1024, 'x');
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl(curl_easy_init(),
                                                                   curl_easy_cleanup);
    const auto url = "http://127.0.0.1:" + std::to_string(proxy.port());
    curl_easy_setopt(curl.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl.get(), CURLOPT_PROXY, "");
    curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t{body.size()});
    curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDS, body.constData());
    EXPECT_THAT(curl_easy_perform(curl.get()), AnyOf(CURLE_SEND_ERROR, CURLE_RECV_ERROR));
    long error = 0;
    curl_easy_getinfo(curl.get(), CURLINFO_OS_ERRNO, &error);
    EXPECT_EQ(error, ECONNRESET);
    curl_off_t sent = 0;
    curl_easy_getinfo(curl.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
    EXPECT_LT(sent, body.size());
    EXPECT_EQ(server.connectionCount(), 0);

    proxy.heal();
    RawClient after(proxy.port());
    EXPECT_EQ(ask(after), 200);
}

TEST_F(FaultProxies, Keep_what_they_pass_on_when_they_are_healed)
{
    RawClient client(proxy.port());
    EXPECT_EQ(ask(client), 200);
    proxy.heal();
    EXPECT_EQ(ask(client), 200);
    EXPECT_EQ(proxy.connectionCount(), 1);
}

TEST_F(FaultProxies, Refuse_connections_while_they_are_down)
{
    const int port = proxy.port();
    RawClient kept(port);
    EXPECT_EQ(ask(kept), 200);
    proxy.goDown();
    EXPECT_TRUE(kept.waitForClose());
    EXPECT_FALSE(RawClient(port).isConnected());
    proxy.comeUp();
    RawClient after(port);
    EXPECT_EQ(ask(after), 200);
}

TEST(FaultProxy, Shuts_down_whatever_it_is_at)
{
    for (const auto fault : {Fault::None, Fault::Swallow, Fault::Reset}) {
        support::ScriptedServer server;
        server.answer(support::ScriptedAnswer::blackHole());
        auto proxy = std::make_unique<FaultProxy>(server.port());
        proxy->strike(fault);
        RawClient client(proxy->port());
        client.send(question);
        ASSERT_TRUE(support::waitFor([&] { return proxy->connectionCount() == 1; }));
        proxy.reset();
        EXPECT_TRUE(client.waitForClose());
    }
}
