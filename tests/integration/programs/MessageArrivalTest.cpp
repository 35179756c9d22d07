#include "ProgramFixture.h"

#include <support/KeepsToContract.h>

#include <QJsonArray>

#include <csignal>

namespace {

/// A register that takes commands from the test, and its display.
class MessageArrival : public ProgramFixture
{
protected:
    MessageArrival()
    {
        display = startDisplay();
        cashRegister = startRegister({"--config", config(displayPort), "--commands", "-"});
        EXPECT_TRUE(waitForRecord(1));
        EXPECT_EQ(record().value(0)["path"].toString(), "/configure");
    }

    /// Runs a command and waits for the message it leads to.
    QJsonObject messageOf(const QByteArray &command)
    {
        awaitAnswer(*cashRegister, command);
        const auto before = record().size();
        does(command);
        EXPECT_TRUE(waitForRecord(before + 1)) << command.toStdString();
        const auto message = record().value(before);
        support::expectPostKeepsToContract(message["path"].toString(), message["body"].toObject());
        return message;
    }

    void does(const QByteArray &command)
    {
        const auto answers = cashRegister->outputLines().size();
        cashRegister->write(command + '\n');
        ASSERT_TRUE(cashRegister->waitForOutputLines(answers + 1));
        EXPECT_TRUE(cashRegister->outputLines().last().endsWith("\"ok\":true}"))
            << cashRegister->outputLines().last().toStdString();
    }

    void expectMessage(const QByteArray &command, const QString &path, const QByteArray &body)
    {
        SCOPED_TRACE(command.toStdString());
        const auto message = messageOf(command);
        EXPECT_EQ(message["path"].toString(), path);
        EXPECT_EQ(message["body"].toObject(), support::json(body));
        EXPECT_EQ(message["status"].toInt(), 200);
    }

    ProcessPtr display;
    ProcessPtr cashRegister;
};

} // namespace

TEST_F(MessageArrival, Of_the_configuration_is_first_and_has_the_settings)
{
    const auto body = record().value(0)["body"].toObject();
    EXPECT_EQ(body["View.Style:displayType"].toInt(-1), 0);
    EXPECT_EQ(body["View.Logic:closedDocumentTimeout"].toInt(), 10000);
    EXPECT_FALSE(body.contains("Shop:goods"));
    EXPECT_FALSE(body.contains("ViewConnector:server"));
}

TEST_F(MessageArrival, Of_a_receipt_has_its_content)
{
    const auto message = messageOf("{\"do\":\"open\",\"number\":7}");
    EXPECT_EQ(message["path"].toString(), "/updateDocument");
    EXPECT_EQ(message["body"].toObject(),
              support::json(R"({"number":7,"state":"open","positions":[],"sum":0,"discountSum":0,
                                "total":0,"payments":[],"change":0})"));
    const auto sold = messageOf("{\"do\":\"sell\",\"goods\":\"100\",\"quantity\":2}");
    EXPECT_EQ(sold["body"]["total"].toInt(), 2000);
    EXPECT_EQ(sold["body"]["positions"][0]["name"].toString(), "Чай");
}

TEST_F(MessageArrival, Of_no_document_is_an_empty_object)
{
    expectMessage(R"({"do":"document","properties":{"a":1}})", "/updateDocument", R"({"a":1})");
    expectMessage(R"({"do":"document","properties":null})", "/updateDocument", "{}");
}

TEST_F(MessageArrival, Of_a_changed_document_has_all_its_properties)
{
    expectMessage(R"({"do":"document","properties":{"a":1,"имя":"Чек"}})", "/updateDocument",
                  R"({"a":1,"имя":"Чек"})");
    expectMessage(R"({"do":"change","properties":{"a":[2]}})", "/updateDocument",
                  R"({"a":[2],"имя":"Чек"})");
    expectMessage(R"({"do":"action","context":6,"action":131})", "/updateDocument",
                  R"({"a":[2],"имя":"Чек"})");
}

TEST_F(MessageArrival, Of_a_payment_by_code_opens_and_closes)
{
    messageOf("{\"do\":\"open\",\"number\":7}");
    messageOf("{\"do\":\"sell\",\"goods\":\"100\"}");
    expectMessage(
        R"({"do":"qr","timeout":90})", "/qrPayment",
        R"({"qrCode":"https://pay.example.com/r/7?sum=1000","amount":1000,"timeout":90})");
    expectMessage(R"({"do":"close-dialog"})", "/qrPayment", R"({"close":true})");
}

TEST_F(MessageArrival, Of_prices_opens_scrolls_and_closes)
{
    expectMessage(R"({"do":"prices","goods":["101"],"columns":3})", "/priceList",
                  R"({"title":"Прайс-лист","columns":3,"data":[{"code":"101","name":"Сахар",
                      "unit":"шт","price":500}]})");
    expectMessage(R"({"do":"scroll","to":"up"})", "/priceList", R"({"scroll":"up"})");
    expectMessage(R"({"do":"close-dialog"})", "/priceList", R"({"close":true})");
}

TEST_F(MessageArrival, Of_content_shows_and_hides_it)
{
    expectMessage(R"({"do":"content","text":"Привет"})", "/content",
                  R"({"data":"Привет","type":"text","hide":false})");
    expectMessage(R"({"do":"content","hide":true})", "/content",
                  R"({"data":"","type":"text","hide":true})");
}

TEST_F(MessageArrival, Of_a_payment_draft_has_what_the_register_reported)
{
    expectMessage(R"({"do":"event","code":266,"arguments":{"amount":5,"kind":"card"}})",
                  "/paymentdraft", R"({"amount":5,"kind":"card"})");
}

TEST_F(MessageArrival, Is_printed_and_summed_up_by_the_display)
{
    does("{\"do\":\"open\",\"number\":7}");
    does("{\"do\":\"content\",\"hide\":true}");
    ASSERT_TRUE(display->waitForOutputLines(4)) << "lines are printed as messages arrive";
    EXPECT_TRUE(display->outputLines()[2].endsWith("receipt 7, positions 0, total 0.00"));

    display->signal(SIGTERM);
    EXPECT_EQ(display->exitCode(), 0);
    EXPECT_TRUE(display->output().endsWith("Received: 3 messages, 0 refused\n"
                                           "  Configure      1\n"
                                           "  UpdateDocument 1\n"
                                           "  Content        1\n"))
        << display->output().toStdString();
}

TEST_F(MessageArrival, Is_recorded_with_its_keys_in_a_fixed_order)
{
    messageOf("{\"do\":\"content\",\"hide\":true}");
    const auto line = read("record.jsonl").split('\n').value(1);
    const QRegularExpression pattern(
        "^\\{\"n\":2,\"ms\":[0-9.]+,\"path\":\"/content\",\"body\":\\{\"data\":\"\",\"hide\":true,"
        "\"type\":\"text\"\\},\"status\":200,\"monotonicMs\":[0-9.]+\\}$");
    EXPECT_TRUE(pattern.match(QString(line)).hasMatch()) << line.toStdString();
}
