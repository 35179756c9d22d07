#include "Complete.h"

#include <doctor/PluginCheck.h>

#include <support/FreshSingletons.h>

#include <QFile>
#include <QLibraryInfo>
#include <QTemporaryDir>

using namespace doctor;

namespace {

Finding check(const QString &file)
{
    const auto findings = complete(checkPlugin(file));
    EXPECT_EQ(findings.size(), 1u);
    return findings.front();
}

class PluginCheck : public testing::Test
{
protected:
    /// A plug-in like the right one but for some bytes.
    QString spoiled(const QByteArray &before, const QByteArray &after) const
    {
        QFile original(QStringLiteral(PLUGIN_FILE));
        EXPECT_TRUE(original.open(QIODevice::ReadOnly));
        auto content = original.readAll();
        EXPECT_TRUE(content.contains(before)) << before.toStdString();
        content.replace(before, after);
        QFile file(folder.filePath("spoiled.so"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(PluginCheck, Loads_the_plugin_and_names_the_versions_of_qt)
{
    const auto finding = check(PLUGIN_FILE);
    EXPECT_EQ(finding.status, Status::Ok) << english(finding).toStdString();
    EXPECT_EQ(finding.details["interface"].toString(), "su.tavro.AbstractPlugin");
    EXPECT_EQ(finding.details["runningQt"].toString(), QLibraryInfo::version().toString());
    EXPECT_EQ(finding.details["pluginQt"].toString(),
              QString("%1.%2").arg(QT_VERSION_MAJOR).arg(QT_VERSION_MINOR));
}

TEST_F(PluginCheck, Does_not_start_the_plugin)
{
    const support::FreshSingletons singletons;
    EXPECT_EQ(check(RECORDING_PLUGIN).status, Status::Ok);
    EXPECT_FALSE(singletons.config().value("RecordingPlugin:calls").isValid());
}

TEST_F(PluginCheck, Fails_what_is_no_plugin_of_this_host)
{
    for (const auto *file : {"/none.so", README, FOREIGN_INTERFACE_PLUGIN, FOREIGN_OBJECT_PLUGIN})
        EXPECT_EQ(check(file).status, Status::Failed) << file;
    EXPECT_EQ(check(FOREIGN_INTERFACE_PLUGIN).details["interface"].toString(),
              "org.example.OtherPlugin");
}

TEST_F(PluginCheck, Explains_a_missing_library)
{
    const auto finding = check(spoiled("libregisterhost.so", "libnot-to-be-had.s"));
    EXPECT_EQ(finding.status, Status::Failed);
    EXPECT_TRUE(english(finding).contains("libnot-to-be-had.s"));
    EXPECT_TRUE(finding.remedy.in(Language::English).contains("install the packages"))
        << english(finding).toStdString();
}

TEST_F(PluginCheck, Explains_a_plugin_of_a_newer_qt)
{
    // The metadata: the name of the note, the version of their form, and that of Qt.
    const auto header = [](int minor) {
        return QByteArrayLiteral("qt-project!\0\1") + char(QT_VERSION_MAJOR) + char(minor);
    };
    const auto finding = check(spoiled(header(QT_VERSION_MINOR), header(QT_VERSION_MINOR + 40)));
    EXPECT_EQ(finding.status, Status::Failed);
    EXPECT_TRUE(finding.remedy.in(Language::English).contains("another version of Qt"))
        << english(finding).toStdString();
}
