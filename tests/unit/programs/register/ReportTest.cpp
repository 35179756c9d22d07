#include "TillFixture.h"

#include <register/Report.h>

#include <common/MonotonicClock.h>
#include <common/UsageError.h>

#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

namespace {

class ReportTest : public TillFixture
{
protected:
    QJsonObject written() const
    {
        writeReport(fileName, till);
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return support::json(file.readAll());
    }

    QTemporaryDir folder;
    const QString fileName = folder.filePath("report.json");
};

} // namespace

TEST_F(ReportTest, Holds_the_times_of_what_was_asked_for_by_type)
{
    const double before = monotonicMs();
    till.init();
    till.setDocument({});
    till.setDocument({});
    const auto asked = written()["asked"].toObject();
    EXPECT_EQ(asked.keys(), (QStringList{"Configure", "UpdateDocument"}));
    EXPECT_EQ(asked["Configure"].toArray().size(), 1);
    const auto updates = asked["UpdateDocument"].toArray();
    ASSERT_EQ(updates.size(), 2);
    EXPECT_GE(updates[0].toDouble(), before);
    EXPECT_LE(updates[0].toDouble(), updates[1].toDouble());
    EXPECT_LE(updates[1].toDouble(), monotonicMs());
}

TEST_F(ReportTest, Holds_the_document_without_what_belongs_to_the_object)
{
    const auto receipt = QSharedPointer<Receipt>::create(5);
    receipt->addPosition({"100", "46", "Чай", "шт", 1000, 2, 0});
    receipt->setObjectName("x");
    receipt->setProperty("cashier", "Иванова");
    till.setDocument(receipt);
    const auto document = written()["document"].toObject();
    EXPECT_EQ(document.keys(), (QStringList{"cashier", "change", "discountSum", "number",
                                            "payments", "positions", "state", "sum", "total"}));
    EXPECT_EQ(document["total"].toInt(), 2000);
    EXPECT_EQ(document["cashier"].toString(), "Иванова");
    EXPECT_EQ(document["positions"][0]["name"].toString(), "Чай");
}

TEST_F(ReportTest, Is_empty_when_nothing_happened)
{
    EXPECT_EQ(written(), support::json(R"({"asked":{},"document":{}})"));
}

TEST_F(ReportTest, Replaces_an_older_one)
{
    QFile file(fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(10'000, 'x'));
    file.close();
    EXPECT_EQ(written().keys(), (QStringList{"asked", "document"}));
}

TEST_F(ReportTest, Fails_when_it_cannot_be_written)
{
    for (const auto &name :
         {folder.filePath("none/report.json"), folder.path(), QStringLiteral("/dev/full")}) {
        try {
            writeReport(name, till);
            ADD_FAILURE() << "no error: " << name.toStdString();
        } catch (const UsageError &error) {
            EXPECT_TRUE(QString(error.what()).startsWith("--report " + name + ": "))
                << error.what();
        }
    }
}
