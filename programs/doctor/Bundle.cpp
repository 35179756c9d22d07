#include <doctor/Bundle.h>

#include <doctor/ListeningPorts.h>
#include <doctor/Versions.h>

#include <common/UsageError.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>
#include <QSaveFile>
#include <QTemporaryDir>

namespace doctor {

namespace {

constexpr int deadlineMs = 10'000;
/// The folder in the archive, so that unpacking it leaves one thing behind.
const auto folderName = QStringLiteral("viewconnector-doctor");

[[noreturn]] void refuse(const QString &fileName, const QString &reason)
{
    throw UsageError(QStringLiteral("--bundle %1: cannot be written: %2.").arg(fileName, reason));
}

QString settingsText(const Diagnosis &diagnosis)
{
    QString text;
    for (const auto &setting : diagnosis.settings) {
        const auto json = toJson(setting);
        text += QStringLiteral("%1 = %2 (%3)\n")
                    .arg(json[u"key"].toString(), json[u"value"].toVariant().toString(),
                         json[u"source"].toString());
    }
    return text;
}

QByteArray packed(const QString &folder, const QString &fileName)
{
    QProcess tar;
    tar.start(QStringLiteral("tar"),
              {QStringLiteral("--create"), QStringLiteral("--sort=name"), QStringLiteral("--gzip"),
               QStringLiteral("--owner=0"), QStringLiteral("--group=0"),
               QStringLiteral("--directory"), folder, folderName});
    if (!tar.waitForFinished(deadlineMs) || tar.exitStatus() != QProcess::NormalExit ||
        tar.exitCode() != 0)
        refuse(fileName, QStringLiteral("tar: ") + tar.errorString() + u' ' +
                             QString::fromLocal8Bit(tar.readAllStandardError()).simplified());
    return tar.readAllStandardOutput();
}

} // namespace

QMap<QString, QByteArray> bundleFiles(const Diagnosis &diagnosis, Language language)
{
    return {
        {QStringLiteral("report.json"), QJsonDocument(toJson(diagnosis, language)).toJson()},
        {QStringLiteral("report.txt"), toText(diagnosis, language).toUtf8()},
        {QStringLiteral("settings.txt"), settingsText(diagnosis).toUtf8()},
        {QStringLiteral("versions.txt"), versionsText().toUtf8()},
        {QStringLiteral("ports.txt"), toText(ListeningPorts()).toUtf8()},
    };
}

void writeBundle(const QString &fileName, const QMap<QString, QByteArray> &files)
{
    const QTemporaryDir folder;
    const QDir content(folder.filePath(folderName));
    if (!folder.isValid() || !content.mkpath(QStringLiteral(".")))
        refuse(fileName, folder.errorString());
    for (auto entry = files.begin(); entry != files.end(); ++entry) {
        QFile file(content.filePath(entry.key()));
        if (!file.open(QIODevice::WriteOnly) || file.write(*entry) != entry->size())
            refuse(fileName, file.errorString());
    }
    if (QFileInfo::exists(fileName))
        refuse(fileName, QStringLiteral("it is there already, give a new name"));
    QSaveFile bundle(fileName);
    if (!bundle.open(QIODevice::WriteOnly))
        refuse(fileName, bundle.errorString());
    bundle.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    bundle.write(packed(folder.path(), fileName));
    if (!bundle.commit())
        refuse(fileName, bundle.errorString());
}

} // namespace doctor
