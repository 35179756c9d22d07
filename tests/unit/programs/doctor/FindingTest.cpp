#include "Complete.h"

#include <support/Json.h>

using namespace doctor;

TEST(DoctorText, Fills_each_language_with_what_is_meant_for_it)
{
    const auto text =
        Text("%1 из %2: %3", "%1 of %2: %3").with(1, QString("%2"), Text("плохо", "bad"));
    EXPECT_EQ(text.in(Language::Russian), "1 из %2: плохо");
    EXPECT_EQ(text.in(Language::English), "1 of %2: bad") << "what is filled in has no places";
}

TEST(DoctorText, Is_joined_in_each_language)
{
    const auto text = Text("а", "a") + Text("б", "b");
    EXPECT_EQ(text.in(Language::Russian), "аб");
    EXPECT_EQ(text.in(Language::English), "ab");
    EXPECT_FALSE(text.isEmpty());
    EXPECT_TRUE(Text().isEmpty());
}

TEST(Finding, Is_an_object_with_its_details)
{
    const auto bad = failed("port", {"занят", "taken"}, {"освободите", "free it"}, {{"pid", 7}});
    EXPECT_EQ(toJson(bad, Language::English),
              support::json(R"({"check":"port","status":"failed","message":"taken",
                                "remedy":"free it","pid":7})"));
    EXPECT_EQ(toJson(ok("port", {"свободен", "free"}), Language::Russian),
              support::json(R"({"check":"port","status":"ok","message":"свободен"})"));
}

TEST(Finding, Has_a_status_with_a_name)
{
    const Text text("а", "a");
    const Findings findings{ok("c", text), warning("c", text, text), skipped("c", text, text)};
    EXPECT_EQ(statuses(findings), (QStringList{"ok", "warning", "skipped"}));
    EXPECT_FALSE(hasFailed(findings));
    EXPECT_TRUE(hasFailed({ok("c", text), failed("c", text, text)}));
}
