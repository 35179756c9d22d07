// The subscription to an ad service: what a bad answer does, which is a line or two in the log and
// nothing else.

#include "AdsStreamFixture.h"

#include <KeyAgreement.h>

#include <QJsonDocument>

#include <atomic>

namespace {

using support::AdAnswer;
using support::ScriptedAnswer;

const QString connectionError = "Ошибка подключения к сервису Ads: ";
const QString emptyAnswer = "Пустой ответ от сервера";
const QString wrongAnswer = "Неверный ответ от сервера";

QString decodingError(const QByteArray &plaintext)
{
    QJsonParseError error{};
    QJsonDocument::fromJson(plaintext, &error);
    return "Ошибка декодирования ответа от сервера: " + error.errorString();
}

class AdsStreamAnswers : public AdsStreamFixture
{
protected:
    AdsStreamAnswers()
    {
        connector->adTimetable = timetable;
        connector->currentAd = 1;
    }

    /// Whether the settings are played on as if nothing had been asked.
    void expectNothingElseHappened() const
    {
        EXPECT_EQ(connector->adTimetable, timetable);
        EXPECT_EQ(connector->currentAd, 1);
        EXPECT_TRUE(connector->sent.isEmpty());
        for (const auto &line : log.lines())
            EXPECT_EQ(line.level, QtCriticalMsg) << line.text.toStdString();
    }

    void expectConnectionError(const QStringList &lines) const
    {
        ASSERT_EQ(lines.size(), 2);
        EXPECT_TRUE(lines[0].startsWith(connectionError)) << lines[0].toStdString();
        EXPECT_GT(lines[0].size(), connectionError.size()) << "the reason is missing";
        EXPECT_EQ(lines[1], emptyAnswer);
        expectNothingElseHappened();
    }

    const QList<QVariant> timetable{QVariantMap{{"id", "a"}}, QVariantMap{{"id", "b"}}};
};

TEST_F(AdsStreamAnswers, A_refused_connection_is_an_error_and_an_empty_answer)
{
    service.goDown();
    const auto lines = subscribe(2);
    expectConnectionError(lines);
    EXPECT_EQ(lines[0], connectionError + "Connection refused");
}

TEST_F(AdsStreamAnswers, An_address_that_leads_nowhere_is_an_error_and_an_empty_answer)
{
    for (const char *address : {"nonsense", "ads://host", "http://"}) {
        SCOPED_TRACE(address);
        const auto before = log.textsOf("viewconnector").size();
        connector->asyncGetAdsStream(QUrl(address));
        EXPECT_TRUE(
            support::waitFor([&] { return log.textsOf("viewconnector").size() >= before + 2; }));
        expectConnectionError(log.textsOf("viewconnector").mid(before));
    }
}

TEST_F(AdsStreamAnswers, An_error_status_is_an_error_and_an_empty_answer_although_it_has_a_body)
{
    for (const char *status : {"400 Bad Request", "401 Unauthorized", "403 Forbidden",
                               "404 Not Found", "500 Internal Server Error", "503 Unavailable"}) {
        SCOPED_TRACE(status);
        answer({.status = status});
        expectConnectionError(subscribe(2));
    }
}

TEST_F(AdsStreamAnswers, A_connection_that_is_lost_is_an_error_and_an_empty_answer)
{
    for (const auto &broken :
         {ScriptedAnswer::closed(), ScriptedAnswer::garbage(), ScriptedAnswer::truncated()}) {
        service.answer(broken);
        expectConnectionError(subscribe(2));
    }
}

TEST_F(AdsStreamAnswers, An_empty_body_is_an_empty_answer)
{
    answer({.spoilBody = [](const QByteArray &) { return QByteArray(); }});
    EXPECT_EQ(subscribe(), QStringList{emptyAnswer});
    expectNothingElseHappened();
    answer({.status = "204 No Content"});
    EXPECT_EQ(subscribe(), QStringList{emptyAnswer});
    expectNothingElseHappened();
}

QByteArray flipped(QByteArray body, qsizetype place)
{
    body[place] = static_cast<char>(body[place] ^ 1);
    return body;
}

const auto foreignKey = QByteArray::fromHex(
    "3076301006072a8648ce3d020106052b810400220362000421bcc63bf639128c95bed2fb187653f1afec359275708f"
    "81996b7cf76ce5c0cd615767f14552953bf479d09c4291b5813bcb241ea60bc581ed5ec60790dd53a9870547e28ac1"
    "7f8aae2b34d3ca68aa089ad10b4b8973b7c35e6eeb183e6c9570"); // on P-384

struct WrongRow
{
    const char *name;
    AdAnswer answer;
};

const WrongRow wrongTable[] = {
    {"no key", {.hasKey = false}},
    {"an empty key", {.publicKey = QByteArray()}},
    {"a key that is none", {.publicKey = QByteArray("no key")}},
    {"a key on another curve", {.publicKey = foreignKey}},
    {"a point beside the curve",
     {.publicKey = QByteArray::fromHex("3059301306072a8648ce3d020106082a8648ce3d03010703420004") +
                   QByteArray(64, '\1')}},
    {"a key in other than base64", {.rawKey = "????"}},
    {"a vector in other than base64", {.rawIv = "!!!!!!!!!!!!!!!!!!!!!!!!"}},
    {"no vector", {.hasIv = false}},
    {"an empty vector", {.iv = ""}},
    {"a vector of 12 bytes", {.iv = "twelve bytes"}},
    {"a vector of 15 bytes", {.iv = "fifteen bytes.."}},
    {"a body of 1 byte", {.spoilBody = [](const QByteArray &) { return QByteArray("x"); }}},
    {"a body of 15 bytes", {.spoilBody = [](const QByteArray &) { return QByteArray(15, 'x'); }}},
};

TEST_F(AdsStreamAnswers, A_key_a_vector_or_a_body_that_cannot_be_used_is_a_wrong_answer)
{
    for (const auto &row : wrongTable) {
        SCOPED_TRACE(row.name);
        answer(row.answer);
        EXPECT_EQ(subscribe(), QStringList{wrongAnswer});
        expectNothingElseHappened();
    }
}

struct UndecodableRow
{
    const char *name;
    AdAnswer answer;
    QByteArray decrypted;
};

const UndecodableRow undecodableTable[] = {
    {"not JSON", {.plaintext = "not JSON"}, "not JSON"},
    {"JSON that is cut short", {.plaintext = R"({"listen":"L")"}, R"({"listen":"L")"},
    {"two objects", {.plaintext = "{}{}"}, "{}{}"},
    {"a bare tag over nothing", {.plaintext = ""}, ""},
    {"a changed ciphertext",
     {.spoilBody = [](const QByteArray &body) { return flipped(body, 0); }},
     ""},
    {"a changed tag",
     {.spoilBody = [](const QByteArray &body) { return flipped(body, body.size() - 1); }},
     ""},
    {"a body that is cut short",
     {.spoilBody = [](const QByteArray &body) { return body.chopped(1); }},
     ""},
    {"16 bytes that are no tag",
     {.spoilBody = [](const QByteArray &) { return QByteArray(16, 'x'); }},
     ""},
    {"another key", {.publicKey = ssl::generateKeyPairEC().second.der()}, ""},
};

TEST_F(AdsStreamAnswers, What_does_not_decrypt_to_JSON_is_a_decoding_error)
{
    for (const auto &row : undecodableTable) {
        SCOPED_TRACE(row.name);
        answer(row.answer);
        EXPECT_EQ(subscribe(), QStringList{decodingError(row.decrypted)});
        expectNothingElseHappened();
    }
}

TEST_F(AdsStreamAnswers, A_bare_tag_over_nothing_is_a_body_of_16_bytes)
{
    std::atomic<qsizetype> size = 0;
    answer({.plaintext = "", .spoilBody = [&](const QByteArray &body) {
                size = body.size();
                return body;
            }});
    subscribe();
    EXPECT_EQ(size, 16);
}

TEST_F(AdsStreamAnswers, After_a_failure_the_settings_are_played_on)
{
    answer({.plaintext = "not JSON"});
    subscribe();
    connector->processAdResult({{"value", true}});
    EXPECT_EQ(connector->sent.constLast().data["id"], "a");
}

TEST_F(AdsStreamAnswers, A_service_that_never_answers_changes_nothing)
{
    service.answer(ScriptedAnswer::blackHole());
    connector->asyncGetAdsStream(service.url());
    ASSERT_TRUE(support::waitFor([&] { return service.requestCount() == 1; }));
    support::letPass(std::chrono::milliseconds(50));
    EXPECT_TRUE(log.lines().isEmpty());
    expectNothingElseHappened();
    service.goDown();
    EXPECT_TRUE(support::waitFor([&] { return log.lines().size() == 2; }));
}

} // namespace
