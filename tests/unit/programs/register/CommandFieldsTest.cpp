#include <register/CommandFields.h>

#include <register/CommandError.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

const auto command = support::json(
    R"({"whole":7,"low":-2147483648,"high":2147483647,"tooLow":-2147483649,"tooHigh":2147483648,
        "huge":1e300,"fraction":1.5,"text":"Чай","empty":"","yes":true,"no":false,"none":null,
        "object":{"a":1},"list":[1],"wholeAsText":"7"})");
const CommandFields fields(command);

QString errorOf(const std::function<void()> &read)
{
    try {
        read();
    } catch (const CommandError &error) {
        return QString::fromUtf8(error.what());
    }
    return "no error";
}

/// One kind of read, with what its errors ask for and the fields that it must refuse.
struct Kind
{
    const char *wanted;
    std::function<void(const QString &)> read;
    std::function<void(const QString &)> readWithDefault;
    QStringList wrongFields;
};

const Kind kinds[] = {
    {"a whole number",
     [](const QString &name) { fields.integer(name); },
     [](const QString &name) { fields.integer(name, 1); },
     {"fraction", "text", "yes", "none", "object", "list", "tooLow", "tooHigh", "huge",
      "wholeAsText"}},
    {"a number",
     [](const QString &name) { fields.number(name); },
     [](const QString &name) { fields.number(name, 1.5); },
     {"text", "no", "none", "object", "list", "wholeAsText"}},
    {"a text",
     [](const QString &name) { fields.text(name); },
     [](const QString &name) { fields.text(name, QString("x")); },
     {"whole", "yes", "none", "object", "list"}},
    {"true or false",
     [](const QString &name) { fields.boolean(name); },
     [](const QString &name) { fields.boolean(name, true); },
     {"whole", "text", "none", "object", "list"}},
    {"an object",
     [](const QString &name) { fields.object(name); },
     [](const QString &name) { fields.object(name, QJsonObject()); },
     {"whole", "text", "yes", "none", "list"}},
    {"a list",
     [](const QString &name) { fields.list(name); },
     [](const QString &name) { fields.list(name, QJsonArray()); },
     {"whole", "text", "yes", "none", "object"}},
};

} // namespace

TEST(CommandFields, Are_read_by_their_type)
{
    EXPECT_EQ(fields.integer("whole"), 7);
    EXPECT_EQ(fields.integer("low"), std::numeric_limits<int>::min());
    EXPECT_EQ(fields.integer("high"), std::numeric_limits<int>::max());
    EXPECT_EQ(fields.number("fraction"), 1.5);
    EXPECT_EQ(fields.number("whole"), 7);
    EXPECT_EQ(fields.text("text"), "Чай");
    EXPECT_EQ(fields.text("empty", QString("default")), "");
    EXPECT_TRUE(fields.boolean("yes"));
    EXPECT_FALSE(fields.boolean("no", true));
    EXPECT_EQ(fields.object("object"), (QJsonObject{{"a", 1}}));
    EXPECT_EQ(fields.list("list"), QJsonArray{1});
}

TEST(CommandFields, That_are_missing_read_as_their_default)
{
    EXPECT_EQ(fields.integer("missing", -3), -3);
    EXPECT_EQ(fields.number("missing", 0.25), 0.25);
    EXPECT_EQ(fields.text("missing", QString("x")), "x");
    EXPECT_TRUE(fields.boolean("missing", true));
    EXPECT_EQ(fields.object("missing", QJsonObject{{"b", 2}}), (QJsonObject{{"b", 2}}));
    EXPECT_EQ(fields.list("missing", QJsonArray{"c"}), QJsonArray{"c"});
}

TEST(CommandFields, That_are_missing_without_a_default_are_named_with_what_to_give)
{
    for (const auto &kind : kinds)
        EXPECT_EQ(errorOf([&] { kind.read("missing"); }),
                  QString("\"missing\" is missing: give %1").arg(kind.wanted));
}

TEST(CommandFields, Of_another_type_are_named_with_what_to_give_even_if_there_is_a_default)
{
    for (const auto &kind : kinds) {
        for (const auto &name : kind.wrongFields) {
            const auto error = QString("\"%1\" has the wrong type: give %2").arg(name, kind.wanted);
            EXPECT_EQ(errorOf([&] { kind.read(name); }), error);
            EXPECT_EQ(errorOf([&] { kind.readWithDefault(name); }), error);
        }
    }
}

TEST(CommandFields, Tell_null_from_missing)
{
    EXPECT_TRUE(fields.contains("none"));
    EXPECT_TRUE(fields.value("none").isNull());
    EXPECT_FALSE(fields.contains("missing"));
    EXPECT_TRUE(fields.value("missing").isUndefined());
}
