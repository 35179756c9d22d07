#include "Complete.h"

#include <doctor/Bundle.h>

#include <common/UsageError.h>

#include <support/Json.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

using namespace doctor;

namespace {

class Bundle : public testing::Test
{
protected:
    QByteArray tar(const QStringList &arguments) const
    {
        QProcess process;
        process.start("tar", arguments);
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0);
        return process.readAllStandardOutput();
    }

    QTemporaryDir folder;
    const QString file = folder.filePath("-host:bundle.tar.gz"); // no option, and no host's file
};

} // namespace

TEST_F(Bundle, Holds_the_files_in_a_folder_of_their_own)
{
    writeBundle(file, {{"a.txt", "content of a\n"}, {"b.json", "{}"}});
    const QFileInfo info(file);
    EXPECT_EQ(info.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther),
              QFileDevice::Permissions());
    EXPECT_EQ(tar({"-tzf", file, "--force-local"}),
              "viewconnector-doctor/\nviewconnector-doctor/a.txt\nviewconnector-doctor/b.json\n");
    EXPECT_EQ(tar({"-xOzf", file, "--force-local", "viewconnector-doctor/a.txt"}),
              "content of a\n");
}

TEST_F(Bundle, Is_refused_where_it_cannot_be_written)
{
    for (const auto &name : {folder.path(), folder.filePath("none/bundle.tar.gz")})
        EXPECT_THROW(writeBundle(name, {{"a.txt", ""}}), UsageError) << name.toStdString();
}

TEST_F(Bundle, Takes_the_place_of_no_file)
{
    QFile settings(folder.filePath("shop.toml"));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    EXPECT_THROW(writeBundle(settings.fileName(), {{"a", "b"}}), UsageError);
    EXPECT_EQ(settings.size(), 0);
}

TEST_F(Bundle, Holds_report_settings_versions_and_ports)
{
    Diagnosis diagnosis{"shop.toml", QDateTime::currentDateTime(), {}, {}};
    diagnosis.findings.push_back(ok("port", {"Порт свободен.", "The port is free."}));
    diagnosis.settings.append({{"ViewConnector:port", "integer", 1}, "ViewConnector:port", 5, 5});
    const auto files = bundleFiles(diagnosis, Language::English);
    EXPECT_EQ(files.keys(), (QStringList{"ports.txt", "report.json", "report.txt", "settings.txt",
                                         "versions.txt"}));
    EXPECT_EQ(support::json(files["report.json"]), toJson(diagnosis, Language::English));
    EXPECT_EQ(files["report.txt"], toText(diagnosis, Language::English).toUtf8());
    EXPECT_EQ(files["settings.txt"], "ViewConnector:port = 5 (file)\n");
    for (const auto *library :
         {"viewconnector-doctor ", "Qt ", "libcurl", "libmicrohttpd", "OpenSSL"})
        EXPECT_TRUE(files["versions.txt"].contains(library)) << library;
}
