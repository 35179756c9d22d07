#include "RecordedShop.h"

#include <support/KeepsToContract.h>

#include <QMap>

namespace {

/// One of each message, with what a real shop would not give away. The pauses let each reach the
/// display before the next, and three advertisements be shown.
const QByteArray sale = R"({"do":"wait","ms":400}
{"do":"content","text":"Чек на ivan@mail.example, тел. +7 (900) 123-45-67, http://a.example/?key=SECRET"}
{"do":"wait","ms":300}
{"do":"open"}
{"do":"sell","goods":"100","quantity":2}
{"do":"wait","ms":300}
{"do":"sell","goods":"112","quantity":0.734}
{"do":"wait","ms":300}
{"do":"prices","goods":["100","112"]}
{"do":"wait","ms":300}
{"do":"close-dialog"}
{"do":"wait","ms":300}
{"do":"qr","text":"https://pay.example.com/r/7?sum=SECRET"}
{"do":"wait","ms":300}
{"do":"close-dialog"}
{"do":"wait","ms":300}
{"do":"draft","kind":"card"}
{"do":"wait","ms":300}
{"do":"pay","kind":"card"}
{"do":"wait","ms":1200}
)";

class Recording : public RecordedShop
{
protected:
    /// The sale, recorded; what the display had is in its own record.
    void recordSale(const QStringList &options)
    {
        const auto display = startAskingDisplay();
        const auto recorder =
            startRecorder(QStringList{"--output", path("recording.jsonl")} + options);
        playShop(sale);
        stop(*recorder);
        stop(*display);
    }

    static QStringList pathsOf(const QList<QJsonObject> &lines)
    {
        QStringList paths;
        for (const auto &line : lines)
            paths.append(line["path"].toString());
        return paths;
    }
};

} // namespace

TEST_F(Recording, Holds_every_message_of_the_displays_own_record_in_its_order)
{
    recordSale({"--unredacted"});
    const auto lines = linesTo("display", read("recording.jsonl"));
    const auto own = record();
    ASSERT_EQ(lines.size(), own.size());
    for (qsizetype i = 0; i < own.size(); ++i) {
        EXPECT_EQ(lines[i]["path"], own[i]["path"]) << i;
        EXPECT_EQ(lines[i]["type"], messageTypeOfPath(own[i]["path"].toString())) << i;
        EXPECT_EQ(lines[i]["body"], own[i]["body"]) << i;
        EXPECT_EQ(lines[i]["status"], own[i]["status"]) << i;
    }
    for (const auto &type : messageTypes)
        EXPECT_TRUE(pathsOf(own).contains(QString::fromLatin1(type.path))) << type.path;
}

TEST_F(Recording, Holds_the_displays_requests)
{
    recordSale({});
    QMap<QString, int> accepted;
    for (const auto &line : linesTo("plug-in", read("recording.jsonl"))) {
        const auto body = line["body"].toObject();
        const auto name = body["name"].toString();
        support::expectKeepsToContract(name, body);
        EXPECT_FALSE(line.contains("type"));
        if (line["status"] == 200)
            ++accepted[name];
        else // the register ends meanwhile, or has ended
            EXPECT_TRUE(line["status"] == 503 || !line["error"].toString().isEmpty());
    }
    EXPECT_EQ(accepted["getImage"], 2);
    const auto shown = pathsOf(record()).count("/showAD");
    EXPECT_GE(shown, 3);
    EXPECT_GE(accepted["adResult"], shown - 1); // each but the first was asked for by one
    EXPECT_LE(accepted["adResult"], shown);
}

TEST_F(Recording, Gives_nobody_away_unless_told_to)
{
    recordSale({});
    const auto recording = QString::fromUtf8(read("recording.jsonl"));
    EXPECT_GT(recording.count('\n'), 15);
    static const QRegularExpression longNumber("\\d{9}");
    static const QRegularExpression largePicture("data:[^\"]{150}");
    static const QRegularExpression secret(
        "SECRET|mail\\.example|123-45-67|pay\\.example|key=[^x]");
    for (const auto &pattern : {longNumber, largePicture, secret})
        EXPECT_FALSE(pattern.match(recording).hasMatch())
            << pattern.match(recording).captured().toStdString();

    // What was passed on is as it was.
    const auto own = QString::fromUtf8(read("record.jsonl"));
    for (const auto *each : {"SECRET", "ivan@mail.example", "4600000001005", "123-45-67"})
        EXPECT_TRUE(own.contains(each)) << each;
}

TEST_F(Recording, Keeps_the_shape_of_what_it_hides)
{
    recordSale({});
    const auto lines = linesTo("display", read("recording.jsonl"));
    const auto own = record();
    ASSERT_EQ(lines.size(), own.size());
    for (qsizetype i = 0; i < own.size(); ++i) {
        const auto body = lines[i]["body"].toObject();
        EXPECT_EQ(body.keys(), own[i]["body"].toObject().keys()) << i;
        support::expectPostKeepsToContract(lines[i]["path"].toString(), body);
    }
}

TEST_F(Recording, Played_again_gives_a_fresh_display_the_same_messages)
{
    recordSale({"--unredacted"});
    const auto before = record();
    const auto display = startDisplay(); // with a new record
    Process replay(REPLAY, {"--recording", path("recording.jsonl"), "--speed", "0", "--display",
                            QString("http://127.0.0.1:%1").arg(displayPort)});
    EXPECT_EQ(replay.exitCode(), 0) << replay.output().toStdString();
    const auto after = record();
    ASSERT_EQ(after.size(), before.size());
    for (qsizetype i = 0; i < after.size(); ++i) {
        EXPECT_EQ(after[i]["path"], before[i]["path"]) << i;
        EXPECT_EQ(after[i]["body"], before[i]["body"]) << i;
    }
}

TEST_F(Recording, Can_be_played_again_when_it_is_redacted)
{
    recordSale({});
    const auto count = record().size();
    const auto display = startDisplay();
    Process replay(REPLAY, {"--recording", path("recording.jsonl"), "--speed", "0", "--display",
                            QString("http://127.0.0.1:%1").arg(displayPort)});
    EXPECT_EQ(replay.exitCode(), 0) << replay.output().toStdString();
    EXPECT_EQ(record().size(), count);
}
