#include "DisplayFixture.h"

#include <support/OutputCapture.h>

#include <QDateTime>

namespace {

constexpr auto *svg = "<svg xmlns='http://www.w3.org/2000/svg' width='1' height='1'/>";

class CustomerScreenTest : public DisplayFixture
{
protected:
    CustomerScreenTest() { start(); }

    /// Posts a message of a register; what the display prints is not the test's.
    void tell(const QByteArray &path, const QByteArray &body)
    {
        support::outputOf(stdout, [&] { EXPECT_EQ(post(path, body).status, 200); });
    }

    QByteArray dataAd(const QByteArray &content, int seconds = 600) const
    {
        return R"({"url":"data:application/octet-stream;base64,)" + content.toBase64() +
               R"(","time":)" + QByteArray::number(seconds) + "}";
    }

    QString adKind() const { return state().value("ad")["kind"].toString(); }

    bool waitForAd(const QString &kind) const
    {
        return support::waitFor([&] { return adKind() == kind; });
    }

    /// The beginning of a WebM file, by which it is recognised.
    static QByteArray film() { return QByteArray::fromHex("1a45dfa39f428284") + "webm"; }
};

} // namespace

TEST_F(CustomerScreenTest, Is_a_page_with_the_files_that_it_needs)
{
    const auto page = get("/");
    EXPECT_EQ(page.status, 200);
    EXPECT_TRUE(page.header.contains("Content-Type: text/html; charset=utf-8"));
    EXPECT_TRUE(page.body.contains("/screen/"));
    EXPECT_EQ(get("/screen/index.html").status, 200);
}

TEST_F(CustomerScreenTest, Is_told_the_messages_that_matter_with_their_time)
{
    const auto before = QDateTime::currentMSecsSinceEpoch();
    tell("/configure", R"({"a":1})");
    tell("/content", R"({"data":"old"})");
    tell("/content", R"({"data":"new"})");
    const auto told = state();
    EXPECT_GE(told["now"].toInteger(), before);
    const auto messages = told["messages"].toArray();
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages[1]["n"].toInt(), 3);
    EXPECT_EQ(messages[1]["type"].toString(), "Content");
    EXPECT_EQ(messages[1]["body"]["data"].toString(), "new");
    EXPECT_GE(messages[1]["at"].toInteger(), before);
    EXPECT_LE(messages[1]["at"].toInteger(), told["now"].toInteger());
}

TEST_F(CustomerScreenTest, Is_told_each_message_as_it_comes)
{
    support::RawClient page(display->port());
    page.send("GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n");
    ASSERT_TRUE(support::waitFor([&] { return page.received().contains("event: state"); }));
    tell("/content", R"({"data":"x"})");
    EXPECT_TRUE(support::waitFor([&] {
        return page.received().contains(R"("body":{"data":"x"},"n":1,"type":"Content"})");
    }));
}

TEST_F(CustomerScreenTest, Is_not_told_what_is_no_message)
{
    support::outputOf(stdout, [&] { EXPECT_EQ(post("/content", "[]").status, 400); });
    EXPECT_TRUE(keptMessages().isEmpty());
}

TEST_F(CustomerScreenTest, Shows_its_last_state_again_after_a_restart)
{
    tell("/configure", R"({"a":1})");
    tell("/updateDocument", R"({"number":7})");
    const auto before = keptMessages();
    start();
    EXPECT_EQ(keptMessages(), before);
    tell("/content", "{}");
    EXPECT_EQ(keptMessages().last()["n"].toInt(), 3);
}

TEST_F(CustomerScreenTest,
       Plays_the_advertisement_again_after_a_restart_since_its_result_is_awaited)
{
    tell("/showAD", dataAd(svg, 1));
    start();
    support::outputOf(
        stdout, [&] { EXPECT_TRUE(support::waitFor([&] { return plugin.requestCount() > 0; })); });
    EXPECT_EQ(support::json(plugin.requests().constFirst().body)["name"].toString(), "adResult");
}

TEST_F(CustomerScreenTest, Leaves_the_state_of_a_display_alone_that_has_the_port)
{
    tell("/content", R"({"data":"x"})");
    options.port = display->port();
    {
        const Display second(options);
        EXPECT_FALSE(second.isListening());
    }
    tell("/paymentdraft", R"({"a":1})");
    options.port = 0;
    start();
    EXPECT_EQ(keptMessages().size(), 2);
}

TEST_F(CustomerScreenTest, Has_the_QR_code_of_the_present_payment)
{
    EXPECT_EQ(get("/qr.svg").status, 404);
    tell("/qrPayment", R"({"qrCode":"https://pay.example.com/1","amount":1,"timeout":1})");
    const auto picture = get("/qr.svg?n=1");
    EXPECT_EQ(picture.status, 200);
    EXPECT_TRUE(picture.header.contains("Content-Type: image/svg+xml"));
    EXPECT_TRUE(picture.body.startsWith("<svg "));
    tell("/qrPayment", R"({"close":true})");
    EXPECT_EQ(get("/qr.svg").status, 404);
}

TEST_F(CustomerScreenTest, Has_the_pictures_that_the_settings_name)
{
    QFile logo(folder.filePath("logo.svg"));
    ASSERT_TRUE(logo.open(QIODevice::WriteOnly));
    logo.write(svg);
    logo.close();
    tell("/configure", R"({"View.Style:appLogoPath":")" + logo.fileName().toUtf8() +
                           R"(","View.Style:backgroundImagePath":null})");
    EXPECT_EQ(get("/look/logo?n=1").body, svg);
    EXPECT_EQ(get("/look/background").status, 404);
    start();
    EXPECT_EQ(get("/look/logo").body, svg);
    tell("/configure", "{}");
    EXPECT_EQ(get("/look/logo").status, 404);
}

TEST_F(CustomerScreenTest, Has_the_pictures_of_the_touch_layout_where_that_is_used)
{
    const auto write = [&](const QString &name, const QByteArray &content) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    };
    const auto large = QByteArray(svg).replace("width='1'", "width='2'");
    QJsonObject settings{{"View.Style:appLogoPath", write("common.svg", svg)},
                         {"View.QmlStyle:appLogoPath", write("touch.svg", large)},
                         {"View.Style:backgroundImagePath", write("background.svg", svg)},
                         {"View.QmlStyle:backgroundImagePath", ""}};
    tell("/configure", QJsonDocument(settings).toJson());
    EXPECT_EQ(get("/look/logo").body, svg);
    settings["View.Interface:touchng"] = true;
    tell("/configure", QJsonDocument(settings).toJson());
    EXPECT_EQ(get("/look/logo").body, large);
    EXPECT_EQ(get("/look/background").body, svg) << "an empty path names no other";
}

TEST_F(CustomerScreenTest, Has_the_picture_or_film_of_the_present_advertisement)
{
    EXPECT_EQ(adKind(), "none");
    tell("/showAD", dataAd(svg));
    ASSERT_TRUE(waitForAd("picture"));
    EXPECT_EQ(state().value("ad")["n"].toInt(), 1);
    EXPECT_EQ(get("/ad?n=1").body, svg);
    EXPECT_EQ(get("/ad?n=2").status, 204) << "of another advertisement";
    tell("/showAD", dataAd(film()));
    ASSERT_TRUE(waitForAd("film"));
    const auto answer = get("/ad?n=2");
    EXPECT_TRUE(answer.header.contains("Content-Type: video/webm")) << answer.header.toStdString();
    EXPECT_EQ(answer.body, film());
}

TEST_F(CustomerScreenTest, Reports_an_advertisement_that_the_page_cannot_play)
{
    tell("/showAD", dataAd(film()));
    ASSERT_TRUE(waitForAd("film"));
    EXPECT_EQ(post("/ad-failed", R"({"n":7,"reason":"too late"})").status, 204);
    EXPECT_EQ(adKind(), "film");
    const auto printed = support::outputOf(stdout, [&] {
        EXPECT_EQ(post("/ad-failed", R"({"n":1,"reason":"no such codec"})").status, 204);
        EXPECT_TRUE(support::waitFor([&] { return plugin.requestCount() > 0; }));
    });
    EXPECT_TRUE(printed.contains("no such codec")) << printed.toStdString();
    EXPECT_EQ(adKind(), "none");
    EXPECT_FALSE(support::json(plugin.requests().constFirst().body)["value"].toBool(true));
}

TEST_F(CustomerScreenTest, Is_refused_under_a_foreign_name_and_from_a_foreign_page)
{
    EXPECT_EQ(send("GET / HTTP/1.1\r\nHost: shop.example\r\n\r\n").status, 403);
    EXPECT_EQ(send("GET /events HTTP/1.1\r\nHost: localhost\r\nOrigin: http://evil.example\r\n\r\n")
                  .status,
              403);
}

TEST_F(CustomerScreenTest, May_have_a_port_besides)
{
    options.pagePort = 0;
    options.stateFile.clear();
    start();
    ASSERT_TRUE(display->isListening());
    support::RawClient client(display->pagePort());
    client.send("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_EQ(client.answer().status, 200);
    support::outputOf(stdout, [&] {
        client.send(support::RawClient::request("/content", "{}", "X-Replay: 1\r\n"));
        EXPECT_EQ(client.answer().status, 200) << "a recording is played from the page";
    });
    EXPECT_EQ(keptMessages().size(), 1);
}

TEST_F(CustomerScreenTest, Is_not_taken_up_by_a_display_that_cannot_have_its_second_port)
{
    tell("/showAD", dataAd(svg, 1));
    display.reset();
    const support::ScriptedServer other;
    const auto before = plugin.requestCount();
    options.pagePort = other.port();
    start();
    EXPECT_FALSE(display->isListening());
    EXPECT_EQ(adKind(), "none");
    EXPECT_EQ(plugin.requestCount(), before);
}

TEST_F(CustomerScreenTest, Does_not_count_the_pictures_of_an_earlier_run)
{
    tell("/image", R"({"id":{"type":"GoodsCode","value":"100"},"uri":"data:1"})");
    start();
    EXPECT_EQ(keptMessages().size(), 1);
    const auto summary = support::outputOf(stdout, [&] { display->printSummary(); });
    EXPECT_FALSE(summary.contains("Pictures:")) << summary.toStdString();
}
