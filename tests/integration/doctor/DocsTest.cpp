#include "DoctorFixture.h"

#include <QSet>

namespace {

QString document(const char *name)
{
    QFile file(QStringLiteral(DOCS "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return QString::fromUtf8(file.readAll());
}

class DoctorDocs : public DoctorFixture
{
};

} // namespace

TEST_F(DoctorDocs, Name_every_check_and_every_key_of_a_report)
{
    const auto text = document("doctor.md");
    const auto display = startDisplay();
    const auto service = startAdService();
    moreSettings = "closedDocumentTimeou = 1\n[View.ADTimetable.bad]\nurl = \"file:///none\"\n";
    const auto report = examine(1);
    for (const auto &key : report.keys())
        EXPECT_TRUE(text.contains('"' + key + "\":")) << key.toStdString();

    QSet<QString> words;
    for (const auto &finding : findings(report)) {
        const auto keys = finding.keys();
        words.unite({keys.begin(), keys.end()});
        words.insert(finding["check"].toString());
        words.insert(finding["step"].toString());
    }
    words.remove("");
    EXPECT_GT(words.size(), 40);
    for (const auto &word : words)
        EXPECT_TRUE(text.contains('`' + word + '`')) << word.toStdString();
}

TEST_F(DoctorDocs, Explain_every_log_line_to_the_operator)
{
    const auto text = document("operator.md");
    static const QRegularExpression row("^\\| (`[^`]+`) \\| (?:INFO|DEBUG|WARN|ERROR) \\|",
                                        QRegularExpression::MultilineOption);
    int lines = 0;
    for (const auto &match : row.globalMatch(document("log.md"))) {
        ++lines;
        EXPECT_TRUE(text.contains("\n| " + match.captured(1) + " | "))
            << match.captured(1).toStdString();
    }
    EXPECT_GT(lines, 20);
}

TEST_F(DoctorDocs, Explain_every_reason_of_a_lost_display_or_port_to_the_operator)
{
    const auto operators = document("operator.md");
    const auto reasons = document("log.md").section("## Reasons", 1).section("answered 400", 0, 0);
    static const QRegularExpression row("^\\| (`.*) \\|", QRegularExpression::MultilineOption);
    static const QRegularExpression span("`([^`]+)`");
    int found = 0;
    for (const auto &line : row.globalMatch(reasons)) {
        for (const auto &reason : span.globalMatch(line.captured(1).section(" | ", 0, 0))) {
            ++found;
            EXPECT_TRUE(
                operators.contains(reason.captured(1).section(u'…', 0, 0).section("%1:", 0, 0)))
                << reason.captured(1).toStdString();
        }
    }
    EXPECT_GT(found, 12);
}

TEST_F(DoctorDocs, Explain_every_check_to_the_operator)
{
    const auto text = document("operator.md");
    for (const auto *check : {"plugin", "settings", "port", "display", "timetable", "goods",
                              "pictures", "ads", "clock"})
        EXPECT_TRUE(text.contains(QString("`%1`").arg(check))) << check;
}
