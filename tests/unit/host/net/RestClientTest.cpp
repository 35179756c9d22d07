#include "RestClientFixture.h"

#include <support/PrintQt.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

using RestClients = RestClientFixture;

/// Sets a variable of the environment for as long as it lives.
class Environment
{
public:
    Environment(const char *name, const QByteArray &value)
        : m_name(name), m_wasSet(qEnvironmentVariableIsSet(name)), m_old(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~Environment() { m_wasSet ? qputenv(m_name, m_old) : qunsetenv(m_name); }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    const char *m_name;
    bool m_wasSet;
    QByteArray m_old;
};

QByteArray textOf(qsizetype size)
{
    QByteArray text;
    while (text.size() < size)
        text += "{\"товар\":\"Молоко 3,2 % «Луг»\"}\n";
    return text;
}

} // namespace

TEST_F(RestClients, Deliver_the_body_the_path_and_the_header_fields_as_they_are)
{
    const QByteArray bodies[] = {"{\"чек\":1}", "", QByteArray("\0\1\xff", 3), textOf(300 * 1024),
                                 textOf(2 * 1024 * 1024)};
    const RestClient::Headers headers{
        {QStringLiteral("Content-Type"), QStringLiteral("application/json")},
        {QStringLiteral("Accept"), QStringLiteral("application/json")},
        {QStringLiteral("X-Till"), QStringLiteral("5")},
    };
    for (const auto &body : bodies) {
        SCOPED_TRACE(testing::Message() << body.size() << " bytes");
        EXPECT_EQ(post(body, headers), 0);
        const auto request = server.requests().last();
        EXPECT_EQ(request.method, QByteArray("POST"));
        EXPECT_EQ(request.path, QByteArray("/configure"));
        EXPECT_TRUE(request.body == body);
        EXPECT_EQ(request.field("content-type"), QByteArray("application/json"));
        EXPECT_EQ(request.field("accept"), QByteArray("application/json"));
        EXPECT_EQ(request.field("x-till"), QByteArray("5"));
        EXPECT_EQ(request.field("content-length"), QByteArray::number(body.size()));
        EXPECT_FALSE(request.hasField("expect"));
        EXPECT_FALSE(request.hasField("transfer-encoding"));
    }
    EXPECT_EQ(server.requestCount(), std::ssize(bodies));
}

TEST_F(RestClients, Send_no_field_of_an_earlier_post_again)
{
    post("{}", {{QStringLiteral("X-Till"), QStringLiteral("5")}});
    post("{}");
    EXPECT_TRUE(server.requests().first().hasField("x-till"));
    EXPECT_FALSE(server.requests().last().hasField("x-till"));
}

TEST_F(RestClients, Encode_an_address_that_is_not_ASCII)
{
    EXPECT_EQ(client.post(server.url(QStringLiteral("/чек?имя=a b")), "{}", {}), 0);
    EXPECT_EQ(server.requests().first().path,
              QByteArray("/%D1%87%D0%B5%D0%BA?%D0%B8%D0%BC%D1%8F=a%20b"));
}

TEST_F(RestClients, Do_not_ask_the_proxies_of_the_environment)
{
    const support::ScriptedServer proxy;
    const auto address = proxy.url().toEncoded();
    const Environment http("http_proxy", address);
    const Environment all("ALL_PROXY", address);
    const Environment except("no_proxy", "");
    const Environment exceptToo("NO_PROXY", "");
    RestClient fresh;
    EXPECT_EQ(fresh.post(server.url(), "{}", {}), 0);
    EXPECT_EQ(server.requestCount(), 1);
    EXPECT_EQ(proxy.connectionCount(), 0);
}

TEST_F(RestClients, Refuse_addresses_that_are_not_HTTP)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const auto otherScheme = [this](const char *scheme) {
        auto url = server.url();
        url.setScheme(QLatin1String(scheme));
        return url;
    };
    const QUrl addresses[] = {QUrl::fromLocalFile(file.fileName()), otherScheme("ftp"),
                              otherScheme("gopher"), otherScheme("telnet"), QUrl()};
    for (const auto &address : addresses) {
        SCOPED_TRACE(address.toString().toStdString());
        const int result = client.post(address, "{}", {});
        EXPECT_GT(result, 0);
        EXPECT_LT(result, 100);
    }
    EXPECT_EQ(server.connectionCount(), 0);
    expectDelivery();
}

TEST_F(RestClients, Wait_at_most_for_a_time_that_is_at_least_a_second)
{
    EXPECT_EQ(client.requestTimeout(), 30);
    const struct
    {
        int set;
        int kept;
    } rows[] = {{5, 5}, {1, 1}, {0, 1}, {-7, 1}, {86400, 86400}};
    for (const auto &[set, kept] : rows) {
        client.setRequestTimeout(set);
        EXPECT_EQ(client.requestTimeout(), kept);
    }
}

TEST_F(RestClients, Deliver_with_the_longest_time_out_too)
{
    client.setRequestTimeout(std::numeric_limits<int>::max());
    expectDelivery();
}

TEST_F(RestClients, Have_result_0_before_the_first_post)
{
    EXPECT_EQ(RestClient().result(), 0);
}

TEST_F(RestClients, Run_no_events_of_the_calling_thread)
{
    server.answer(ScriptedAnswer::slow(200ms));
    QObject receiver;
    bool hasRun = false;
    QMetaObject::invokeMethod(
        &receiver, [&] { hasRun = true; }, Qt::QueuedConnection);
    EXPECT_EQ(post(), 0);
    EXPECT_FALSE(hasRun);
    QCoreApplication::processEvents();
    EXPECT_TRUE(hasRun);
}
