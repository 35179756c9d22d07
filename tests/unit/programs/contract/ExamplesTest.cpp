// The examples of the contract's documents.

#include <contract/Contract.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

/// The examples by the name of their file, "QrPayment-close" being one of QrPayment.
QMap<QString, QJsonObject> examples()
{
    QMap<QString, QJsonObject> examples;
    const auto files = QDir(QStringLiteral(EXAMPLES)).entryInfoList(QDir::Files);
    for (const auto &info : files) {
        QFile file(info.filePath());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        examples.insert(info.completeBaseName(), support::json(file.readAll()));
    }
    return examples;
}

QString schemaOf(const QString &example)
{
    return example.section('-', 0, 0);
}

} // namespace

TEST(Examples, Keep_to_the_contract)
{
    const Contract contract;
    const auto all = examples();
    for (auto example = all.begin(); example != all.end(); ++example)
        EXPECT_EQ(contract.problemsOf(schemaOf(example.key()), *example), QStringList())
            << example.key().toStdString();
}

TEST(Examples, Are_there_for_every_schema)
{
    QStringList shown{"SampleReceipt"}; // by those of UpdateDocument
    for (const auto &name : examples().keys())
        shown.append(schemaOf(name));
    for (const auto &name : Contract().names())
        EXPECT_TRUE(shown.contains(name)) << name.toStdString();
}

TEST(Examples, Of_receipts_are_of_the_sample_shop)
{
    const auto all = examples();
    for (const auto *name : {"UpdateDocument", "UpdateDocument-paid"})
        EXPECT_EQ(Contract().problemsOf("SampleReceipt", all.value(name)), QStringList()) << name;
}
