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
    // by those of UpdateDocument, and of ImageData and getImage
    QStringList shown{"SampleReceipt", "SampleImageId"};
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

TEST(Examples, Of_pictures_name_them_as_the_sample_register_does)
{
    const auto all = examples();
    const auto requested = all.value("getImage").value("data").toObject();
    EXPECT_EQ(requested.keys(), (QStringList{"Barcode", "GoodsCode"}));
    QList<QJsonObject> ids;
    for (const auto &id : requested)
        ids.append(id.toObject());
    for (const auto *name : {"ImageData", "ImageData-missing"})
        ids.append(all.value(name).value("id").toObject());
    for (const auto &id : ids)
        EXPECT_EQ(Contract().problemsOf("SampleImageId", id), QStringList());
}

TEST(Examples, Of_the_configuration_take_no_other_settings_than_those_of_their_interface)
{
    const Contract contract;
    const auto all = examples();
    const auto with = [&](const QString &example, const QString &key, const QJsonValue &value) {
        auto body = all.value(example);
        body.insert(key, value);
        return contract.problemsOf("Configure", body);
    };
    EXPECT_EQ(with("Configure-touch", "View.QmlStyle:anything", "x"), QStringList());
    EXPECT_EQ(with("Configure-touch", "View.QmlStyle:", "x"), QStringList());
    EXPECT_EQ(with("Configure-touch", "View.QmlStyle:two\nlines", "x"), QStringList());
    EXPECT_NE(with("Configure-touch", "View.Style:anything", "x"), QStringList());
    EXPECT_NE(with("Configure-touch", "View.QmlStyle:advertisingWidth", "560"), QStringList());
    EXPECT_NE(with("Configure-touch", "View.Interface:touchng", false), QStringList());
    EXPECT_NE(with("Configure", "View.Interface:touchng", true), QStringList());
    EXPECT_NE(with("Configure", "View.QmlStyle:anything", "x"), QStringList());
    EXPECT_NE(with("Configure", "theme:name", "touch"), QStringList());
    EXPECT_EQ(with("Configure", "View.Style:headerHeight", "as the file has it"), QStringList());
}

TEST(Examples, Of_the_configuration_have_the_defaults_of_the_contract)
{
    QFile file(QStringLiteral(PROTOCOL "/schemas/Configure.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto properties = support::json(file.readAll()).value(u"properties").toObject();
    const auto configuration = examples().value("Configure");
    EXPECT_EQ(configuration.size(), 52);
    for (auto setting = configuration.begin(); setting != configuration.end(); ++setting) {
        const auto property = properties.value(setting.key()).toObject();
        EXPECT_TRUE(property.contains(u"default")) << setting.key().toStdString();
        EXPECT_EQ(property.value(u"default"), *setting) << setting.key().toStdString();
    }
}
