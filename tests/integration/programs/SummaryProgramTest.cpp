#include "ProgramFixture.h"

namespace {

class SummaryProgram : public ProgramFixture
{
protected:
    std::unique_ptr<Process> summaryOf(const QByteArray &record) const
    {
        return std::make_unique<Process>(QStringLiteral(SUMMARY),
                                         QStringList{"--report", write("report.json", report),
                                                     "--record", write("record.jsonl", record)});
    }

    const QByteArray report =
        R"({"asked":{"UpdateDocument":[10,20]},"document":{"number":2,"name":"Чай"}})";
    const QByteArray own =
        R"({"n":1,"ms":5,"path":"/updateDocument","body":{"name":"Чай","number":2},"status":200,"monotonicMs":25})";
};

} // namespace

TEST_F(SummaryProgram, Succeeds_when_the_displays_last_receipt_is_the_registers)
{
    const auto process = summaryOf(own + '\n');
    EXPECT_EQ(process->exitCode(), 0);
    EXPECT_EQ(process->output(), "Message          asked for    posted  superseded\n"
                                 "UpdateDocument           2         1           1\n"
                                 "From change to arrival: median 5.0 ms, 99th percentile 5.0 ms\n"
                                 "The display's last receipt equals the register's document.\n");
    EXPECT_EQ(process->errors(), "");
}

TEST_F(SummaryProgram, Fails_when_it_is_another_or_none)
{
    auto other = own;
    other.replace("\"number\":2", "\"number\":3");
    for (const auto &record : {own + '\n' + other + '\n', QByteArray()}) {
        const auto process = summaryOf(record);
        EXPECT_EQ(process->exitCode(), 1);
        EXPECT_TRUE(process->output().endsWith(
            "The display's last receipt DIFFERS from the register's document.\n"));
    }
}
