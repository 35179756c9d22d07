#include <doctor/KnownSettings.h>

#include <contract/Contract.h>

#include <support/PrintQt.h>

#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include <gmock/gmock.h>

using namespace doctor;

namespace {

const QList<KnownSetting> &settings()
{
    static const auto all = knownSettings(Contract());
    return all;
}

struct Documented
{
    QString type;
    QString preset;
};

/// The rows "| `key` | type | default | …" of the README, by key.
QMap<QString, Documented> documented()
{
    QFile readme(QStringLiteral(README));
    EXPECT_TRUE(readme.open(QIODevice::ReadOnly));
    static const QRegularExpression row(
        "^\\| `([A-Za-z.<>]+:[A-Za-z]+)` \\| (\\w+) \\| (`[^`]*`|[^|]*) \\|",
        QRegularExpression::MultilineOption);
    QMap<QString, Documented> rows;
    for (const auto &match : row.globalMatch(QString::fromUtf8(readme.readAll())))
        rows.insert(match.captured(1), {match.captured(2), match.captured(3).remove('`')});
    return rows;
}

} // namespace

TEST(KnownSettings, Are_those_of_the_readme_with_their_types_and_defaults)
{
    const auto rows = documented();
    ASSERT_GT(rows.size(), 70);
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        if (row.key().contains("<id>"))
            continue;
        SCOPED_TRACE(row.key().toStdString());
        const auto *known = findSetting(settings(), row.key());
        ASSERT_NE(known, nullptr);
        EXPECT_EQ(known->key, row.key());
        EXPECT_EQ(known->type == "string" ? QString("text") : known->type, row->type);
        if (known->preset.toVariant().toString().isEmpty())
            EXPECT_TRUE(QStringList({"null", "empty", "none"}).contains(row->preset) ||
                        row->preset.startsWith("that of"))
                << row->preset.toStdString();
        else
            EXPECT_EQ(known->preset.toVariant().toString(), row->preset);
    }
}

TEST(KnownSettings, Are_all_in_the_readme)
{
    const auto rows = documented();
    for (const auto &known : settings()) {
        EXPECT_TRUE(known.key.contains('*') || rows.contains(known.key)) << known.key.toStdString();
    }
}

TEST(KnownSettings, Are_there_once)
{
    QStringList keys;
    for (const auto &known : settings())
        keys.append(known.key);
    EXPECT_EQ(keys.removeDuplicates(), 0);
}

TEST(KnownSettings, Stand_for_any_advertisement_and_any_touch_setting)
{
    const auto *time = findSetting(settings(), "View.ADTimetable.coffee:time");
    ASSERT_NE(time, nullptr);
    EXPECT_EQ(time->key, "View.ADTimetable.*:time");
    EXPECT_EQ(time->instead, 1);
    EXPECT_EQ(findSetting(settings(), "View.ADTimetable:time"), nullptr);
    EXPECT_EQ(findSetting(settings(), "View.ADTimetable.coffee:times"), nullptr);
    EXPECT_EQ(findSetting(settings(), "View.QmlStyle:any")->key, "View.QmlStyle:*");
    EXPECT_EQ(findSetting(settings(), "View.QmlStyle:displayType")->key,
              "View.QmlStyle:displayType");
    EXPECT_EQ(findSetting(settings(), "View.Style:any"), nullptr);
}

TEST(KnownSettings, Tell_what_is_sent_as_it_is)
{
    EXPECT_TRUE(findSetting(settings(), "View.Style:receiptWidth")->sentAsIs);
    EXPECT_FALSE(findSetting(settings(), "View.QmlStyle:advertisingWidth")->sentAsIs);
    EXPECT_FALSE(findSetting(settings(), "ViewConnector:port")->sentAsIs);
}
