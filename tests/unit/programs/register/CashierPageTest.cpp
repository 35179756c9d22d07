#include "CashierFixture.h"

#include <register/CashierPage.h>

#include <support/OutputCapture.h>
#include <support/RawClient.h>

namespace {

using support::RawClient;

class CashierPageTest : public CashierFixture
{
protected:
    RawClient::Answer get(const QByteArray &path, const QByteArray &fields = {}) const
    {
        RawClient client(page.port());
        client.send("GET " + path + " HTTP/1.1\r\nHost: 127.0.0.1\r\n" + fields + "\r\n");
        return client.answer();
    }

    /// Sends a command as the page does; what it prints is kept.
    RawClient::Answer post(const QByteArray &command, const QByteArray &fields = {})
    {
        RawClient::Answer answer;
        printed += support::outputOf(stdout, [&] {
            RawClient client(page.port());
            client.send(RawClient::request("/commands", command, fields));
            answer = client.answer();
        });
        return answer;
    }

    /// The data of the events of this kind that have arrived.
    static QList<QJsonObject> events(const QByteArray &received, const QByteArray &name)
    {
        QList<QJsonObject> all;
        const QByteArray start = "event: " + name + "\ndata: ";
        for (auto at = received.indexOf(start); at >= 0; at = received.indexOf(start, at + 1)) {
            const auto from = at + start.size();
            all.append(support::json(received.mid(from, received.indexOf('\n', from) - from)));
        }
        return all;
    }

    CommandRunner runner{commands};
    CashierPage page{0, runner, till, cashier};
    QByteArray printed;
};

/// A page that follows the register.
class Follower
{
public:
    explicit Follower(int port) : m_client(port)
    {
        m_client.send("GET /events HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
    }

    bool waitFor(const QByteArray &part)
    {
        return support::waitFor([&] { return received().contains(part); });
    }

    QByteArray received() { return m_client.received(); }

private:
    RawClient m_client;
};

} // namespace

TEST_F(CashierPageTest, Is_served_with_its_files_and_nothing_else)
{
    ASSERT_TRUE(page.isListening());
    for (const auto *path : {"/", "/shop", "/cashier/cashier.js", "/common/live.js"})
        EXPECT_EQ(get(path).status, 200) << path;
    for (const auto *path : {"/none", "/cashier/none.js", "/cashier/../main.cpp", "/goods"})
        EXPECT_EQ(get(path).status, 404) << path;
    EXPECT_EQ(get("/commands").status, 405);
}

TEST_F(CashierPageTest, Shows_the_goods_it_was_given)
{
    page.showGoods(goods(), {});
    EXPECT_EQ(QJsonDocument::fromJson(get("/goods").body).array().size(), 3);
}

TEST_F(CashierPageTest, Runs_a_command_and_answers_as_the_scripts_answers_look)
{
    const auto answer = post(R"({"do":"open","number":5})");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, "{\"n\":1,\"do\":\"open\",\"ok\":true}\n");
    EXPECT_EQ(receipt().number(), 5);
    EXPECT_EQ(post(R"({"do":"void","position":1})").body,
              "{\"n\":2,\"do\":\"void\",\"ok\":false,"
              "\"error\":\"there is no position 1: the receipt has 0\"}\n");
    EXPECT_EQ(post("rubbish").status, 200);
    EXPECT_EQ(printed.count('\n'), 3);
}

TEST_F(CashierPageTest, Tells_the_state_first_and_after_each_change)
{
    Follower follower(page.port());
    ASSERT_TRUE(follower.waitFor("event: state"));
    post(R"({"do":"open"})");
    post(R"({"do":"content","text":"a"})"); // changes nothing that is shown
    post(R"({"do":"qr"})");
    ASSERT_TRUE(follower.waitFor(R"("n":3)"));
    const auto states = events(follower.received(), "state");
    ASSERT_EQ(states.size(), 3);
    EXPECT_TRUE(states[0]["receipt"].isNull());
    EXPECT_EQ(states[1]["receipt"]["number"].toInt(), 1);
    EXPECT_EQ(states[2]["dialogs"].toArray().size(), 1);
}

TEST_F(CashierPageTest, Tells_of_each_command_after_the_state_it_led_to)
{
    Follower follower(page.port());
    ASSERT_TRUE(follower.waitFor("event: state"));
    printed += support::outputOf(
        stdout, [&] { runner.run(R"({"do":"open"})", CommandRunner::Source::Script); });
    post(R"({"do":"void","position":1})");
    ASSERT_TRUE(follower.waitFor(R"("source":"page")"));
    const auto received = follower.received();
    const auto answers = events(received, "answer");
    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(answers[0], support::json(R"({"command":{"do":"open"},"text":"{\"do\":\"open\"}",
                                            "source":"script",
                                            "answer":{"n":1,"do":"open","ok":true}})"));
    EXPECT_EQ(answers[1]["answer"]["error"].toString(),
              "there is no position 1: the receipt has 0");
    EXPECT_LT(received.lastIndexOf("event: state"), received.indexOf("event: answer"));
}

TEST_F(CashierPageTest, Takes_no_commands_from_the_pages_of_others)
{
    EXPECT_EQ(post(R"({"do":"open"})", "Origin: http://example.com\r\n").status, 403);
    EXPECT_EQ(get("/", "Origin: http://example.com\r\n").status, 403);
    EXPECT_FALSE(till.receipt());
    EXPECT_EQ(printed, "");
}

TEST_F(CashierPageTest, Says_why_its_port_cannot_be_opened)
{
    const CashierPage second(page.port(), runner, till, cashier);
    EXPECT_FALSE(second.isListening());
    EXPECT_EQ(second.errorString(), "Address already in use");
}
