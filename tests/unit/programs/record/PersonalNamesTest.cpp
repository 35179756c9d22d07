#include <record/PersonalNames.h>

#include <gtest/gtest.h>

TEST(PersonalNames, Are_recognised_however_they_are_written)
{
    for (const auto *name :
         {"client", "clientName", "CLIENT_NAME", "buyer-email", "e_mail", "Phone", "telephone2",
          "cardNumber", "loyaltyLevel", "bonusSum", "inn", "clientINN", "INNOfClient",
          "customer.fio", "apiKey", "View.Ads:token", "authorization",
          // parted otherwise, or not at all
          "apikey", "access-key", "first_name", "f_i_o", "mytoken", "bankcard", "ｔｏｋｅｎ",
          // what opens something, or recognises him
          "passwd", "pwd", "pass", "passphrase", "cvc2", "cvv", "expiryDate", "track2", "otp",
          "smsCode", "sessionId", "jwt", "bearer", "iban", "accountNumber", "approvalCode",
          // who it is, and where
          "tel", "msisdn", "cell", "surname", "lastName", "patronymic", "fullname", "user",
          "userName", "birthDate", "homeAddress", "recipient", "payerName", "cashier",
          // in Russian
          "телефон", "ФИО", "покупатель", "Клиент", "номерКарты", "карта", "почта", "адрес",
          "пароль"})
        EXPECT_TRUE(isPersonalName(name)) << name;
}

TEST(PersonalNames, Are_no_others_that_look_alike)
{
    for (const auto *name :
         {"",           "name",      "inner",     "beginning", "keyboard",
          "panel",      "pinned",    "telling",   "code",      "barcode",
          "number",     "discard",   "disc_perc", "kind",      "View.Style:headerFontColor",
          "theme:name", "positions", "payments",  "display",   "columns",
          "title",      "unit",      "картинка",  "compass",   "cellar",
          "plugin"})
        EXPECT_FALSE(isPersonalName(name)) << name;
}

TEST(PersonalNames, Are_all_that_cannot_be_read)
{
    EXPECT_TRUE(isPersonalName(QString("total") + QChar(0xd800)));
}

TEST(PaymentCodeNames, Say_that_they_lead_to_a_payment)
{
    for (const auto *name : {"qrCode", "SBP_QR", "sbpLink", "payment_link", "payUrl", "deepLink",
                             "PAY-DEEPLINK", "кодСБП"})
        EXPECT_TRUE(isPaymentCodeName(name)) << name;
    for (const auto *name : {"payments", "url", "link", "code", "display", "q"})
        EXPECT_FALSE(isPaymentCodeName(name)) << name;
}
