#include "HttpServerFixture.h"

#include <support/DescriptorLimit.h>
#include <support/PrintQt.h>

#include <QElapsedTimer>
#include <QTcpServer>

#include <gmock/gmock.h>

namespace {

class HttpServerListening : public HttpServerFixture
{
protected:
    QStringList logged() const { return log.textsOf(QStringLiteral("httpserver")); }

    void expectNotListening() const
    {
        EXPECT_FALSE(server->isListening());
        EXPECT_NE(server->errorString(), QString());
        EXPECT_EQ(server->port(), 0);
        ASSERT_FALSE(logged().isEmpty());
        EXPECT_TRUE(logged().last().endsWith(server->errorString()));
        EXPECT_EQ(log.lines().last().level, QtCriticalMsg);
    }
};

} // namespace

TEST_F(HttpServerListening, Gets_a_port_from_the_system_for_port_0)
{
    start();
    EXPECT_TRUE(server->isListening());
    EXPECT_GT(server->port(), 0);
    EXPECT_EQ(server->errorString(), QString());
    EXPECT_TRUE(isServing());
    ASSERT_EQ(logged().size(), 1);
    EXPECT_TRUE(logged().first().endsWith(QStringLiteral("127.0.0.1:%1").arg(server->port())));
}

TEST_F(HttpServerListening, Fails_on_a_port_that_is_taken)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    start({}, other.serverPort());
    expectNotListening();
    EXPECT_TRUE(logged().last().contains(QString::number(other.serverPort())));
}

TEST_F(HttpServerListening, Fails_on_a_port_that_another_of_its_kind_has)
{
    const HttpServer other(0, {});
    ASSERT_TRUE(other.isListening());
    const HttpServer second(other.port(), {});
    EXPECT_FALSE(second.isListening());
    EXPECT_NE(second.errorString(), QString());
}

TEST_F(HttpServerListening, Fails_without_descriptors_and_says_so)
{
    bool hasListened = false;
    for (rlim_t spare = 0; !hasListened; ++spare) {
        SCOPED_TRACE(spare);
        ASSERT_LT(spare, 20U);
        {
            const support::DescriptorLimit limit(
                static_cast<rlim_t>(support::lowestFreeDescriptor()) + spare);
            start();
        }
        hasListened = server->isListening();
        if (!hasListened) {
            EXPECT_EQ(server->errorString(), "Too many open files");
            EXPECT_EQ(server->port(), 0);
        } else {
            EXPECT_TRUE(isServing());
        }
        QElapsedTimer timer;
        timer.start();
        server.reset();
        EXPECT_LT(timer.elapsed(), 5000);
    }
}

TEST_F(HttpServerListening, Fails_beyond_the_range_of_ports)
{
    for (const int port : {-1, 65536, 65536 + 38081}) {
        SCOPED_TRACE(port);
        const HttpServer refused(port, {});
        EXPECT_FALSE(refused.isListening());
        EXPECT_NE(refused.errorString(), QString());
        EXPECT_EQ(refused.port(), 0);
    }
}

TEST_F(HttpServerListening, Fails_on_what_is_no_address_of_this_machine)
{
    for (const auto *address : {"localhost", "", "127.0.0.1.1", "256.0.0.1", "192.0.2.1", "::1"}) {
        SCOPED_TRACE(address);
        HttpServerOptions options;
        options.address = QString::fromLatin1(address);
        const HttpServer refused(0, options);
        EXPECT_FALSE(refused.isListening());
        EXPECT_NE(refused.errorString(), QString());
    }
}

TEST_F(HttpServerListening, Bears_answers_and_destruction_when_it_does_not_listen)
{
    start({}, -1);
    expectNotListening();
    answer(200);
    server.reset();
    EXPECT_TRUE(arrivals.isEmpty());
}

TEST_F(HttpServerListening, Is_reached_only_at_its_address)
{
    start();
    QTcpSocket elsewhere;
    elsewhere.connectToHost(QHostAddress(QStringLiteral("127.0.0.2")),
                            static_cast<quint16>(server->port()));
    EXPECT_FALSE(elsewhere.waitForConnected(2000));
}

TEST_F(HttpServerListening, Takes_its_options_from_the_settings)
{
    fresh.config().setValue(QStringLiteral("HttpServer:address"), QStringLiteral("127.0.0.2"));
    const HttpServer made(0);
    ASSERT_TRUE(made.isListening());
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QStringLiteral("127.0.0.2")),
                         static_cast<quint16>(made.port()));
    EXPECT_TRUE(socket.waitForConnected());
}
