#include <support/FreshSingletons.h>

#include <plugin/ViewConnector.h>

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

class Connector : public ViewConnector
{
public:
    using ViewConnector::readConfigurationPayload;
};

/// The rows "| `key` | type | `default` | …" of the README, by key.
QMap<QString, std::pair<QString, QString>> documentedDefaults()
{
    QFile readme(QStringLiteral(README));
    EXPECT_TRUE(readme.open(QIODevice::ReadOnly));
    const auto text = QString::fromUtf8(readme.readAll());
    const QRegularExpression row(
        QStringLiteral("^\\| `([A-Za-z.]+:[A-Za-z]+)` \\| (\\w+) \\| `([^`]*)` \\|"),
        QRegularExpression::MultilineOption);
    QMap<QString, std::pair<QString, QString>> defaults;
    for (const auto &match : row.globalMatch(text))
        defaults.insert(match.captured(1), {match.captured(2), match.captured(3)});
    return defaults;
}

QString typeName(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
        return QStringLiteral("integer");
    case QMetaType::Bool:
        return QStringLiteral("boolean");
    default:
        return QStringLiteral("text"); // also for no value
    }
}

} // namespace

TEST(Readme, Documents_every_setting_that_the_display_gets_with_type_and_default)
{
    const support::FreshSingletons singletons;
    const auto documented = documentedDefaults();
    const auto payload = Connector().readConfigurationPayload();

    for (auto setting = payload.begin(); setting != payload.end(); ++setting) {
        SCOPED_TRACE(qPrintable(setting.key()));
        ASSERT_TRUE(documented.contains(setting.key()));
        const auto [type, text] = documented.value(setting.key());
        EXPECT_EQ(type, typeName(*setting));
        EXPECT_EQ(text, setting->isValid() ? setting->toString() : QStringLiteral("null"));
    }
}
