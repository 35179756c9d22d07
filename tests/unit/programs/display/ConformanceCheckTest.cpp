#include <display/ConformanceCheck.h>

#include <support/PrintQt.h>

#include <gmock/gmock.h>

namespace {

class ConformanceCheckTest : public testing::Test
{
protected:
    static RequestHeader header(const QString &path)
    {
        RequestHeader header(QStringLiteral("POST"), path);
        header.addValue(QStringLiteral("Accept"), QStringLiteral("application/json"));
        header.addValue(QStringLiteral("Content-Type"), QStringLiteral("application/json"));
        return header;
    }

    QStringList post(const QString &path, const QByteArray &body)
    {
        return check.judge(++number, header(path), readMessage("POST", path, body));
    }

    int wrongOf(const QString &type) const
    {
        const auto types = check.toJson().value(u"types").toObject();
        return types.value(type).toObject().value(u"wrong").toInt();
    }

    ConformanceCheck check;
    int number = 0;
};

} // namespace

TEST_F(ConformanceCheckTest, Has_not_passed_without_a_message)
{
    EXPECT_FALSE(check.hasPassed());
    EXPECT_EQ(check.report(), QStringList{"Check: no message came, so nothing was checked"});
}

TEST_F(ConformanceCheckTest, Has_passed_when_all_is_right)
{
    EXPECT_EQ(post("/qrPayment", R"({"close":true})"), QStringList());
    EXPECT_EQ(post("/updateDocument", "{}"), QStringList());
    EXPECT_TRUE(check.hasPassed());
    EXPECT_EQ(check.report(), (QStringList{"Check: 2 messages keep to the contract, 0 do not",
                                           "  QrPayment      1 right, 0 wrong",
                                           "  UpdateDocument 1 right, 0 wrong"}));
}

TEST_F(ConformanceCheckTest, Names_what_breaks_the_contract_and_where)
{
    post("/qrPayment", R"({"close":true})");
    const auto problems = post("/content", R"({"data":1,"type":"text","hide":"no"})");
    ASSERT_EQ(problems.size(), 1);
    EXPECT_TRUE(problems.first().startsWith("/hide: ")) << problems.first().toStdString();
    EXPECT_FALSE(check.hasPassed());
    EXPECT_EQ(check.report().constLast(), "  message 2, Content: " + problems.first());
    const auto json = check.toJson();
    EXPECT_FALSE(json["passed"].toBool(true));
    EXPECT_EQ(json["messages"].toInt(), 2);
    EXPECT_EQ(json["types"]["Content"].toObject(), (QJsonObject{{"right", 0}, {"wrong", 1}}));
    EXPECT_EQ(json["problems"][0].toObject(),
              (QJsonObject{{"n", 2}, {"type", "Content"}, {"problem", problems.first()}}));
}

TEST_F(ConformanceCheckTest, Takes_a_refused_request_as_wrong)
{
    EXPECT_EQ(post("/nothing", "{}"), QStringList{"no message is posted to this path"});
    EXPECT_EQ(post("/content", "[]"), QStringList{"not a JSON object"});
    EXPECT_EQ(wrongOf("other paths"), 1);
    EXPECT_EQ(wrongOf("Content"), 1);
}

TEST_F(ConformanceCheckTest, Looks_at_the_header_fields)
{
    RequestHeader header(QStringLiteral("POST"), QStringLiteral("/updateDocument"));
    header.addValue(QStringLiteral("Accept"), QStringLiteral("*/*"));
    EXPECT_EQ(check.judge(1, header, readMessage("POST", "/updateDocument", "{}")),
              (QStringList{"the header field Accept is \"*/*\" and not \"application/json\"",
                           "the header field Content-Type is \"\" and not \"application/json\""}));
}

TEST_F(ConformanceCheckTest, Tells_of_so_many_problems_and_no_more)
{
    for (int i = 0; i < ConformanceCheck::maxProblems + 5; ++i)
        post("/nothing", "{}");
    EXPECT_EQ(check.toJson().value(u"problems").toArray().size(), ConformanceCheck::maxProblems);
    EXPECT_EQ(check.toJson().value(u"messages").toInt(), ConformanceCheck::maxProblems + 5);
}
