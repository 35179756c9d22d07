#include <register/check/CheckScript.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int manyPositions = 200;

QJsonObject receiptOfManyPositions()
{
    QJsonArray positions;
    for (int number = 1; number <= manyPositions; ++number)
        positions.append(
            QJsonObject{{QStringLiteral("name"), QStringLiteral("Товар №%1").arg(number)},
                        {QStringLiteral("price"), 100},
                        {QStringLiteral("quantity"), 1},
                        {QStringLiteral("sum"), 100},
                        {QStringLiteral("total"), 100}});
    const QJsonObject properties{{QStringLiteral("number"), 8},
                                 {QStringLiteral("state"), QStringLiteral("open")},
                                 {QStringLiteral("positions"), positions},
                                 {QStringLiteral("sum"), manyPositions * 100},
                                 {QStringLiteral("total"), manyPositions * 100}};
    return {{QStringLiteral("do"), QStringLiteral("document")},
            {QStringLiteral("properties"), properties}};
}

CheckStep step(const char *type, const char *what, const QJsonObject &command)
{
    return {QString::fromLatin1(type), QString::fromLatin1(what), command};
}

CheckStep step(const char *type, const char *what, const char *command)
{
    return step(type, what, QJsonDocument::fromJson(command).object());
}

} // namespace

QList<CheckStep> checkScript()
{
    return {
        step("Configure", "the settings come first", R"({"do":"init"})"),
        step("UpdateDocument", "a receipt is opened", R"({"do":"open","number":7})"),
        step("Content", "a text is shown", R"({"do":"content","text":"Добро пожаловать!"})"),
        step("UpdateDocument", "goods are sold", R"({"do":"sell","goods":"100","quantity":2})"),
        step("PaymentDraft", "a payment is prepared", R"({"do":"draft","kind":"card"})"),
        step("UpdateDocument", "goods with a long name and no picture are sold",
             R"({"do":"sell","goods":"101"})"),
        step("PriceList", "a price list opens",
             R"({"do":"prices","goods":["100","101"],"columns":2})"),
        step("UpdateDocument", "a discount is given",
             R"({"do":"discount","percent":5,"position":1})"),
        step("PriceList", "the price list is scrolled", R"({"do":"scroll","to":"down"})"),
        step("Content", "the text is hidden", R"({"do":"content","hide":true})"),
        step("PriceList", "the price list is closed", R"({"do":"close-dialog"})"),
        step("QrPayment", "a code to pay by is shown", R"({"do":"qr","timeout":90})"),
        step("Content", "a text is shown beside the code", R"({"do":"content","text":"…"})"),
        step("QrPayment", "the code is closed", R"({"do":"close-dialog"})"),
        step("UpdateDocument", "the receipt is paid", R"({"do":"pay","kind":"card"})"),
        step("Content", "that text is hidden too", R"({"do":"content","hide":true})"),
        step("UpdateDocument", "a receipt of 200 positions is opened", receiptOfManyPositions()),
        step("PaymentDraft", "a payment draft of no receipt", R"({"do":"event","code":266})"),
        step("UpdateDocument", "there is no receipt any more",
             R"({"do":"document","properties":null})"),
    };
}
