#include <summary/Summary.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

const auto emptyReport = support::json(R"({"asked":{},"document":{}})");

QJsonObject arrival(const char *path, double ms, const QJsonObject &body = {}, int status = 200)
{
    return {{"n", 1},       {"ms", ms},         {"path", path},
            {"body", body}, {"status", status}, {"monotonicMs", ms}};
}

struct Counts
{
    QString type;
    qsizetype asked;
    qsizetype posted;
    qsizetype superseded;
    bool operator==(const Counts &) const = default;
};

QList<Counts> countsOf(const Summary &summary)
{
    QList<Counts> counts;
    for (const auto &type : summary.types)
        counts.append({type.type, type.asked, type.posted, type.superseded});
    return counts;
}

Summary withLatencies(const QList<double> &latencies)
{
    Summary summary;
    summary.latenciesMs = latencies;
    return summary;
}

} // namespace

TEST(Summary, Counts_what_was_asked_for_what_arrived_and_what_was_superseded)
{
    const auto report = support::json(
        R"({"asked":{"Content":[1,2],"UpdateDocument":[10,20,30,40],"Configure":[0],
            "QrPayment":[5]},"document":{}})");
    const auto summary =
        summarise(report, {arrival("/configure", 1), arrival("/updateDocument", 50),
                           arrival("/content", 3), arrival("/content", 4)});
    EXPECT_EQ(countsOf(summary), (QList<Counts>{{"Configure", 1, 1, 0},
                                                {"UpdateDocument", 4, 1, 3},
                                                {"QrPayment", 1, 0, 1},
                                                {"Content", 2, 2, 0}}));
}

TEST(Summary, Leaves_out_the_types_that_did_not_occur)
{
    EXPECT_TRUE(summarise(emptyReport, {}).types.isEmpty());
}

TEST(Summary, Shows_an_arrival_that_nobody_asked_for_and_supersedes_nothing_by_it)
{
    const auto summary = summarise(emptyReport, {arrival("/priceList", 1)});
    EXPECT_EQ(countsOf(summary), (QList<Counts>{{"PriceList", 0, 1, 0}}));
    EXPECT_TRUE(summary.latenciesMs.isEmpty());
}

TEST(Summary, Ignores_refused_messages)
{
    const auto report = support::json(R"({"asked":{"UpdateDocument":[1]},"document":{"n":1}})");
    const auto summary =
        summarise(report, {arrival("/updateDocument", 2, {{"n", 1}}),
                           arrival("/updateDocument", 3, {{"n", 2}}, 400),
                           arrival("/nothing", 4, {}, 404), arrival("/content", 5, {}, 405)});
    EXPECT_EQ(countsOf(summary), (QList<Counts>{{"UpdateDocument", 1, 1, 0}}));
    EXPECT_EQ(summary.latenciesMs, QList<double>{1});
    EXPECT_TRUE(summary.receiptsEqual);
}

TEST(Summary, Measures_from_the_last_change_before_the_arrival)
{
    const auto report =
        support::json(R"({"asked":{"UpdateDocument":[10,20,100],"Content":[19]},"document":{}})");
    const auto summary =
        summarise(report, {arrival("/updateDocument", 25), arrival("/updateDocument", 100),
                           arrival("/content", 20)});
    EXPECT_EQ(summary.latenciesMs, (QList<double>{0, 1, 5}));
}

TEST(Summary, Does_not_measure_an_arrival_before_any_change)
{
    const auto report = support::json(R"({"asked":{"Content":[50]},"document":{}})");
    EXPECT_TRUE(summarise(report, {arrival("/content", 49)}).latenciesMs.isEmpty());
}

TEST(Summary, Gives_latencies_by_nearest_rank)
{
    EXPECT_EQ(withLatencies({}).latencyAt(0.5), 0);
    EXPECT_EQ(withLatencies({7}).latencyAt(0), 7);
    EXPECT_EQ(withLatencies({7}).latencyAt(0.99), 7);
    const auto four = withLatencies({1, 2, 3, 4});
    EXPECT_EQ(four.latencyAt(0), 1);
    EXPECT_EQ(four.latencyAt(0.25), 1);
    EXPECT_EQ(four.latencyAt(0.26), 2);
    EXPECT_EQ(four.latencyAt(0.5), 2);
    EXPECT_EQ(four.latencyAt(0.99), 4);
    EXPECT_EQ(four.latencyAt(1), 4);

    QList<double> hundred;
    for (int i = 1; i <= 100; ++i)
        hundred.append(i);
    EXPECT_EQ(withLatencies(hundred).latencyAt(0.5), 50);
    EXPECT_EQ(withLatencies(hundred).latencyAt(0.99), 99);
}

TEST(Summary, Finds_the_last_receipt_equal_only_if_it_is_the_registers_own)
{
    const auto report = support::json(
        R"({"asked":{},"document":{"number":2,"positions":[{"name":"Чай"}],"total":100}})");
    const auto own = report["document"].toObject();
    const auto older = support::json(R"({"number":1,"positions":[],"total":0})");
    auto other = own;
    other["total"] = 101;

    EXPECT_TRUE(summarise(report, {arrival("/updateDocument", 1, older),
                                   arrival("/updateDocument", 2, own), arrival("/content", 3)})
                    .receiptsEqual);
    EXPECT_FALSE(summarise(report, {arrival("/updateDocument", 1, own),
                                    arrival("/updateDocument", 2, older)})
                     .receiptsEqual);
    EXPECT_FALSE(summarise(report, {arrival("/updateDocument", 1, other)}).receiptsEqual);
    EXPECT_FALSE(summarise(report, {arrival("/content", 1, own)}).receiptsEqual);
}

TEST(Summary, Does_not_take_no_receipt_for_an_empty_one)
{
    EXPECT_FALSE(summarise(emptyReport, {}).receiptsEqual);
    EXPECT_TRUE(summarise(emptyReport, {arrival("/updateDocument", 1)}).receiptsEqual);
}

TEST(Summary, Is_told_as_a_table)
{
    const auto report =
        support::json(R"({"asked":{"Configure":[0],"UpdateDocument":[10,20]},"document":{"n":1}})");
    auto summary =
        summarise(report, {arrival("/configure", 2.5), arrival("/updateDocument", 26, {{"n", 1}}),
                           arrival("/image", 27)});
    EXPECT_EQ(summary.toText(), "Message          asked for    posted  superseded\n"
                                "Configure                1         1           0\n"
                                "UpdateDocument           2         1           1\n"
                                "ImageData                -         1           -\n"
                                "From change to arrival: median 2.5 ms, 99th percentile 6.0 ms\n"
                                "The display's last receipt equals the register's document.\n");
    summary.receiptsEqual = false;
    EXPECT_TRUE(summary.toText().endsWith(
        "The display's last receipt DIFFERS from the register's document.\n"));
}
