#include "HttpServerFixture.h"

#include <HttpGuard.h>
#include <support/PrintQt.h>

namespace {

using support::RawClient;

bool admits(const char *host, const char *origin = nullptr,
            const QString &address = QStringLiteral("127.0.0.1"))
{
    RequestHeader header(QStringLiteral("POST"), QStringLiteral("/"));
    header.addValue(QStringLiteral("hOST"), QString::fromUtf8(host));
    if (origin != nullptr)
        header.addValue(QStringLiteral("oRIGIN"), QString::fromUtf8(origin));
    return HttpGuard(address).admits(header);
}

class GuardedServer : public HttpServerFixture
{
protected:
    GuardedServer()
    {
        HttpServerOptions options;
        options.guard = true;
        start(options);
    }

    int statusFor(const QByteArray &fields)
    {
        RawClient client(server->port());
        client.send("GET / HTTP/1.0\r\n" + fields + "\r\n");
        return client.answer().status;
    }
};

} // namespace

TEST(HttpGuard, Admits_own_names_with_any_port)
{
    for (const auto *host :
         {"localhost", "LocalHost", "localhost:38081", "localhost:", "localhost:1", "127.0.0.1",
          "127.0.0.1:38081", "127.1.2.3", "127.255.255.255:80", "[::1]", "[::1]:38081",
          "[0:0:0:0:0:0:0:1]", "[0000::0001]:80"}) {
        SCOPED_TRACE(host);
        EXPECT_TRUE(admits(host));
        EXPECT_TRUE(admits("localhost", (std::string("http://") + host).c_str()));
        EXPECT_TRUE(admits("localhost", (std::string("HTTPS://") + host).c_str()));
    }
}

TEST(HttpGuard, Turns_away_parts_of_the_pages_of_other_sites)
{
    const auto admits = [](const char *site, const char *mode) {
        RequestHeader header(QStringLiteral("GET"), QStringLiteral("/"));
        header.addValue(QStringLiteral("Host"), QStringLiteral("localhost"));
        header.addValue(QStringLiteral("sec-fetch-site"), QString::fromUtf8(site));
        header.addValue(QStringLiteral("sec-fetch-mode"), QString::fromUtf8(mode));
        return HttpGuard(QStringLiteral("127.0.0.1")).admits(header);
    };
    EXPECT_FALSE(admits("cross-site", "no-cors"));
    EXPECT_FALSE(admits("cross-site", "cors"));
    EXPECT_TRUE(admits("cross-site", "navigate"));
    for (const auto *site : {"same-origin", "same-site", "none"})
        EXPECT_TRUE(admits(site, "no-cors")) << site;
}

TEST(HttpGuard, Turns_away_all_other_names)
{
    for (const auto *host : {"",
                             ":38081",
                             "example.com",
                             "localhost.example",
                             "localhost.evil",
                             "evil.localhost",
                             "localhost.",
                             "127.0.0.1.evil.example",
                             "127.0.0.1.",
                             "127.0.0.1evil",
                             "127.0.0",
                             "127.1",
                             "0127.0.0.1",
                             "0x7f.0.0.1",
                             "2130706433",
                             "128.0.0.1",
                             "126.0.0.1",
                             "0.0.0.0",
                             "192.168.0.5",
                             "user@localhost",
                             "localhost@evil.example",
                             "evil.example@localhost",
                             "localhost/",
                             "localhost:80:80",
                             "localhost:port",
                             "localhost:-1",
                             "localhost:123456",
                             "localhost evil",
                             "localhost, evil",
                             "localhost,localhost",
                             " localhost",
                             "localhost\n",
                             "[::1",
                             "::1",
                             "[::2]",
                             "[::]",
                             "[::ffff:127.0.0.1]",
                             "[::1]evil",
                             "[::1%lo]",
                             "[]",
                             "[localhost]",
                             "[127.0.0.1]",
                             "null",
                             "\xd0\xbb\xd0\xbe\xd0\xba\xd0\xb0\xd0\xbb"}) {
        SCOPED_TRACE(host);
        EXPECT_FALSE(admits(host));
        EXPECT_FALSE(admits("localhost", (std::string("http://") + host).c_str()));
    }
}

TEST(HttpGuard, Turns_away_origins_that_are_no_pages_of_an_own_name)
{
    for (const auto *origin :
         {"", "null", "NULL", "localhost", "http:localhost", "http:/localhost", "http://",
          "//localhost", "file://", "file://localhost", "ftp://localhost", "http://localhost/",
          "http://localhost/path", "http://localhost?", "http://localhost http://evil.example",
          "http://localhost, http://evil.example", "http://localhost@evil.example",
          "chrome-extension://localhost", "xhttp://localhost"}) {
        SCOPED_TRACE(origin);
        EXPECT_FALSE(admits("localhost", origin));
    }
}

TEST(HttpGuard, Admits_the_address_listened_on_unless_that_is_all_of_them)
{
    EXPECT_TRUE(admits("192.168.0.5:38081", "http://192.168.0.5", QStringLiteral("192.168.0.5")));
    EXPECT_TRUE(admits("localhost", nullptr, QStringLiteral("192.168.0.5")));
    EXPECT_FALSE(admits("192.168.0.6", nullptr, QStringLiteral("192.168.0.5")));
    EXPECT_FALSE(admits("0.0.0.0", nullptr, QStringLiteral("0.0.0.0")));
    EXPECT_FALSE(admits("", nullptr, QStringLiteral("0.0.0.0")));
}

TEST(HttpGuard, Looks_at_every_field_and_misses_a_host)
{
    RequestHeader header;
    EXPECT_FALSE(HttpGuard(QStringLiteral("127.0.0.1")).admits(header));
    header.addValue(QStringLiteral("Host"), QStringLiteral("localhost"));
    EXPECT_TRUE(HttpGuard(QStringLiteral("127.0.0.1")).admits(header));
    auto twoHosts = header;
    twoHosts.addValue(QStringLiteral("Host"), QStringLiteral("evil.example"));
    EXPECT_FALSE(HttpGuard(QStringLiteral("127.0.0.1")).admits(twoHosts));
    header.addValue(QStringLiteral("Origin"), QStringLiteral("http://localhost"));
    EXPECT_TRUE(HttpGuard(QStringLiteral("127.0.0.1")).admits(header));
    header.addValue(QStringLiteral("Origin"), QStringLiteral("http://evil.example"));
    EXPECT_FALSE(HttpGuard(QStringLiteral("127.0.0.1")).admits(header));
}

TEST_F(GuardedServer, Answers_403_to_foreign_requests_and_does_not_deliver_them)
{
    for (const auto *fields :
         {"Host: evil.example\r\n", "Host: localhost\r\nOrigin: null\r\n", "X: no host\r\n"}) {
        SCOPED_TRACE(fields);
        EXPECT_EQ(statusFor(fields), 403);
    }
    EXPECT_TRUE(arrivals.isEmpty());
    EXPECT_TRUE(
        log.textsOf(QStringLiteral("httpserver")).last().contains(QStringLiteral("Origin")));
}

TEST_F(GuardedServer, Delivers_own_requests)
{
    EXPECT_EQ(statusFor("Host: localhost\r\n"), 200);
    EXPECT_EQ(statusFor("Host: 127.0.0.1:1\r\nOrigin: http://[::1]:2\r\n"), 200);
    EXPECT_EQ(arrivals.size(), 2);
}
