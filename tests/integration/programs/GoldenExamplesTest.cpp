// The examples of the documents are what a register posts, and what a display asks for.

#include "ProgramFixture.h"

#include <support/OwnLoopback.h>

namespace {

class GoldenExamples : public ProgramFixture
{
protected:
    static QJsonObject example(const QString &name)
    {
        QFile file(QStringLiteral(EXAMPLES "/") + name + QStringLiteral(".json"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
        return support::json(file.readAll());
    }

    /// Starts the register, which takes commands from the test.
    void start(const QByteArray &more = {})
    {
        const auto config = "[Host]\nlanguage = \"ru\"\n[Shop]\ngoods = \"" DEMO "/goods.toml\"\n"
                            "[HttpServer]\naddress = \"" +
                            support::ownLoopbackAddress().toUtf8() +
                            "\"\n[ViewConnector]\ninterval = 20\nserver = \"http://127.0.0.1:" +
                            QByteArray::number(displayPort) + "\"\n" + more;
        cashRegister = startRegister({"--config", write("shop.toml", config), "--commands", "-"});
    }

    void startDisplayThatAsks()
    {
        pluginUrl = "http://" + support::ownLoopbackAddress() + ":38081";
        display = startDisplay();
    }

    /// Waits until a message as the example has been posted.
    void expectPosted(const QString &name, const QString &path)
    {
        SCOPED_TRACE(name.toStdString());
        const auto wanted = example(name);
        EXPECT_TRUE(support::waitFor([&] { return newest(path) == wanted; }))
            << "not " << testing::PrintToString(newest(path)) << '\n'
            << cashRegister->output().toStdString();
    }

    void expectPosted(const QString &name, const QString &path, const QByteArray &command)
    {
        does(command, path);
        expectPosted(name, path);
    }

    /// Runs a command and waits for the message that it leads to.
    void does(const QByteArray &command, const QString &path)
    {
        awaitAnswer(*cashRegister, command);
        const auto before = messagesTo(path).size();
        cashRegister->write(command + '\n');
        EXPECT_TRUE(support::waitFor([&] { return messagesTo(path).size() > before; }))
            << command.toStdString();
    }

    QList<QJsonObject> messagesTo(const QString &path) const
    {
        QList<QJsonObject> bodies;
        for (const auto &message : record()) {
            if (message["path"].toString() == path)
                bodies.append(message["body"].toObject());
        }
        return bodies;
    }

    QJsonObject newest(const QString &path) const
    {
        const auto messages = messagesTo(path);
        return messages.isEmpty() ? QJsonObject() : messages.last();
    }

    ProcessPtr display;
    ProcessPtr cashRegister;
};

/// A picture of one pixel.
const QByteArray png = QByteArray::fromBase64(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4z8AAAAMBAQDJ/pLvAAAAAElFTkSuQmCC");

} // namespace

TEST_F(GoldenExamples, Of_the_configuration_are_that_of_a_register_without_settings)
{
    display = startDisplay();
    start();
    expectPosted("Configure", "/configure");
}

TEST_F(GoldenExamples, Of_the_touch_interface_are_that_of_a_register_that_runs_it)
{
    display = startDisplay();
    start("[View.Interface]\ntouchng = true\n[View.QmlStyle]\nheaderHeight = 60\n");
    expectPosted("Configure-touch", "/configure");
}

TEST_F(GoldenExamples, Are_what_a_sale_leads_to)
{
    display = startDisplay();
    start();
    ASSERT_TRUE(waitForRecord(1)); // the configuration
    does(R"({"do":"open","number":7})", "/updateDocument");
    does(R"({"do":"sell","goods":"100","quantity":2})", "/updateDocument");
    expectPosted("UpdateDocument", "/updateDocument",
                 R"({"do":"discount","percent":5,"position":1})");
    expectPosted("PaymentDraft", "/paymentdraft", R"({"do":"draft","kind":"card"})");
    expectPosted("QrPayment", "/qrPayment", R"({"do":"qr","timeout":90})");
    expectPosted("QrPayment-close", "/qrPayment", R"({"do":"close-dialog"})");
    expectPosted("PriceList", "/priceList", R"({"do":"prices","goods":["100","112"],"columns":2})");
    expectPosted("PriceList-scroll", "/priceList", R"({"do":"scroll","to":"down"})");
    expectPosted("PriceList-close", "/priceList", R"({"do":"close-dialog"})");
    expectPosted("Content", "/content", R"({"do":"content","text":"Добро пожаловать!"})");
    expectPosted("Content-hide", "/content", R"({"do":"content","hide":true})");
    expectPosted("UpdateDocument-paid", "/updateDocument", R"({"do":"pay","kind":"card"})");
    expectPosted("UpdateDocument-none", "/updateDocument",
                 R"({"do":"document","properties":null})");
}

TEST_F(GoldenExamples, Of_advertisements_and_pictures_are_what_the_settings_and_requests_lead_to)
{
    write("100.png", png);
    startDisplayThatAsks();
    start("[View.Style]\nshowImages = true\n[View.ADTimetable.coffee]\nindex = 1\ntime = 10\nurl = "
          "\"http://127.0.0.1:38083/ads/coffee.svg\"\n");
    expectPosted("ShowAd", "/showAD");
    cashRegister->write(R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":")" +
                        path("100.png").toUtf8() + "\"}\n");
    does(R"({"do":"open"})", "/updateDocument");
    does(R"({"do":"sell","goods":"100"})", "/updateDocument");
    expectPosted("ImageData", "/image");
    does(R"({"do":"sell","goods":"101"})", "/updateDocument");
    expectPosted("ImageData-missing", "/image");
}
