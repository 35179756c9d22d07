#include <Tr.h>

#include <support/FreshSingletons.h>
#include <support/PrintQt.h>

#include <QVariant>

#include <gtest/gtest.h>

namespace {

const auto languageKey = QStringLiteral("Host:language");

class Translations : public testing::Test
{
protected:
    const support::FreshSingletons fresh;
    const tr::Tr text{{{QStringLiteral("de"), QStringLiteral("Milch")},
                       {QStringLiteral("en"), QStringLiteral("milk")},
                       {QStringLiteral("ru"), QStringLiteral("молоко")}}};
};

} // namespace

TEST_F(Translations, Are_Russian_unless_a_language_is_set)
{
    EXPECT_EQ(text.ui(), QStringLiteral("молоко"));
}

TEST_F(Translations, Follow_the_language_setting)
{
    fresh.config().setValue(languageKey, QStringLiteral("en"));
    EXPECT_EQ(text.ui(), QStringLiteral("milk"));
    fresh.config().setValue(languageKey, QStringLiteral("de"));
    EXPECT_EQ(text.ui(), QStringLiteral("Milch"));
}

TEST_F(Translations, Fall_back_to_the_first_language_code)
{
    fresh.config().setValue(languageKey, QStringLiteral("fr"));
    EXPECT_EQ(text.ui(), QStringLiteral("Milch"));
}

TEST_F(Translations, Keep_an_empty_text_in_the_asked_language)
{
    const tr::Tr silent(
        {{QStringLiteral("en"), QStringLiteral("milk")}, {QStringLiteral("ru"), QString()}});
    EXPECT_EQ(silent.ui(), QString());
}

TEST_F(Translations, Are_empty_without_any_text)
{
    EXPECT_EQ(tr::Tr().ui(), QString());
    EXPECT_EQ(tr::Tr(QMap<QString, QString>()).ui(), QString());
}

TEST_F(Translations, Travel_in_a_variant)
{
    const auto variant = QVariant::fromValue(text);
    ASSERT_TRUE(variant.canConvert<tr::Tr>());
    EXPECT_EQ(variant.value<tr::Tr>(), text);
    EXPECT_FALSE(variant.value<tr::Tr>() == tr::Tr());
}
