#include "Complete.h"

#include <doctor/Diagnosis.h>

#include <common/CommandLine.h>

#include <support/Json.h>

#include <QJsonArray>

using namespace doctor;

namespace {

Diagnosis sample()
{
    SettingInEffect port{{"ViewConnector:port", "integer", 38081}, "ViewConnector:port", 5, 5};
    SettingInEffect guard{{"HttpServer:guard", "boolean", false}, "HttpServer:guard", {}, false};
    return {
        "shop.toml",
        QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)),
        {ok("port", {"Порт свободен.", "The port is free."}),
         failed("display", {"Дисплея нет.", "There is no display."}, {"Включите.", "Start it."})},
        {port, guard}};
}

} // namespace

TEST(Diagnosis, Is_a_text_with_marks_remedies_and_a_summary)
{
    EXPECT_EQ(toText(sample(), Language::English),
              "Settings by default:\n"
              "    HttpServer:guard = false\n"
              "\n"
              "What is in effect of the settings in the file shop.toml:\n"
              "    ViewConnector:port = 5\n"
              "\n"
              "✓ The port is free.\n"
              "✗ There is no display.\n"
              "    → Start it.\n"
              "\n"
              "Summary: 1 failed, 0 warnings, 1 ok, 0 "
              "skipped.\n");
    EXPECT_TRUE(
        toText(sample(), Language::Russian)
            .endsWith("✗ Дисплея нет.\n    → Включите.\n\nИтог: ошибок 1, предупреждений 0, "
                      "в порядке 1, пропущено 0.\n"));
}

TEST(Diagnosis, Is_an_object_with_all_of_it)
{
    const auto json = toJson(sample(), Language::Russian);
    EXPECT_EQ(json["program"].toString(), "viewconnector-doctor");
    EXPECT_EQ(json["version"].toString(), CommandLine::version());
    EXPECT_EQ(json["time"].toString(), "2026-01-02T03:04:05");
    EXPECT_EQ(json["config"].toString(), "shop.toml");
    EXPECT_EQ(json["language"].toString(), "ru");
    EXPECT_EQ(json["result"].toString(), "failed");
    EXPECT_EQ(json["counts"].toObject(),
              support::json(R"({"ok":1,"warning":0,"failed":1,"skipped":0})"));
    EXPECT_EQ(json["findings"].toArray().size(), 2);
    EXPECT_EQ(json["findings"][1]["remedy"].toString(), "Включите.");
    EXPECT_EQ(json["settings"].toArray().size(), 2);
    EXPECT_EQ(json["settings"][1]["source"].toString(), "default");
}

TEST(Diagnosis, Is_fine_with_warnings)
{
    auto diagnosis = sample();
    diagnosis.findings.back().status = Status::Warning;
    EXPECT_EQ(toJson(diagnosis, Language::English)["result"].toString(), "ok");
}
