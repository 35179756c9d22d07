// What docs/recorder.md says about the two programs is so.

#include "RecordedShop.h"

#include <support/ScriptedServer.h>

namespace {

class RecorderDocs : public RecordedShop
{
protected:
    RecorderDocs()
    {
        QFile file(QStringLiteral(RECORDER_DOCS));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        text = file.readAll();
    }

    /// Its lines of JSON with this key.
    QList<QJsonObject> examplesWith(const QString &key) const
    {
        QList<QJsonObject> examples;
        for (const auto &line : text.split('\n')) {
            if (line.startsWith("{\"") && support::json(line).contains(key))
                examples.append(support::json(line));
        }
        return examples;
    }

    QByteArray text;
};

} // namespace

TEST_F(RecorderDocs, Name_every_option)
{
    static const QRegularExpression option("(?m)^  (--[a-z-]+ ?<?[A-Z]*)");
    for (const auto *program : {RECORD, REPLAY}) {
        Process help(program, {"--help"});
        ASSERT_EQ(help.exitCode(), 0);
        int count = 0;
        for (auto match = option.globalMatch(QString(help.output())); match.hasNext(); ++count) {
            const auto name = match.next().captured(1).remove('<').trimmed();
            const bool isCommon = QStringList{"--help", "--version", "--debug"}.contains(name);
            EXPECT_TRUE(isCommon || text.contains("| `" + name.toUtf8() + "` |"))
                << name.toStdString();
        }
        EXPECT_GT(count, 6) << "of " << program;
    }
}

TEST_F(RecorderDocs, Have_examples_that_can_be_played)
{
    const auto lines = examplesWith("to");
    ASSERT_EQ(lines.size(), 2);
    QByteArray recording;
    for (const auto &line : lines)
        recording += QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
    const support::ScriptedServer display;
    Process replay(REPLAY, {"--recording", write("recording.jsonl", recording), "--speed", "0",
                            "--json", "--display", display.url().toString()});
    EXPECT_EQ(replay.exitCode(), 0) << replay.errors().toStdString();
    const auto printed = support::jsonLines(replay.output());
    ASSERT_EQ(printed.size(), 2);
    EXPECT_EQ(printed[0].keys(), examplesWith("line").value(0).keys());
    EXPECT_EQ(printed[1].keys(), examplesWith("sent").value(0).keys());
}
