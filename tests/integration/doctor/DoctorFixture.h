#pragma once

#include <integration/ads/AdServiceProcess.h>
#include <integration/programs/ProgramFixture.h>

#include <support/OwnLoopback.h>

#include <QJsonArray>

/// The sample shop with ports of the test's own, and a doctor to look at it.
class DoctorFixture : public ProgramFixture
{
protected:
    /// The sample settings for the display and the ad service that were started last.
    QString shop()
    {
        QFile sample(QStringLiteral(DEMO "/shop.toml"));
        EXPECT_TRUE(sample.open(QIODevice::ReadOnly));
        auto settings = sample.readAll();
        settings.replace("127.0.0.1:38080", "127.0.0.1:" + QByteArray::number(displayPort));
        settings.replace("127.0.0.1:38083", "127.0.0.1:" + QByteArray::number(adPort));
        settings.replace("port = 38081", "port = " + QByteArray::number(pluginPort));
        settings.replace("[HttpServer]", "[HttpServer]\naddress = \"" + pluginAddress + "\"");
        settings.replace("goods.toml", DEMO "/goods.toml");
        return write("shop.toml", settings + moreSettings);
    }

    std::unique_ptr<AdServiceProcess> startAdService(const QStringList &options = {})
    {
        auto service = std::make_unique<AdServiceProcess>(
            QStringList{"--ads", QStringLiteral(DEMO "/ads")} + options);
        adPort = service->port();
        return service;
    }

    /// Runs the doctor, which must end with `code`; what it reports as JSON.
    QJsonObject examine(int code, const QStringList &options = {})
    {
        Process doctor(QStringLiteral(DOCTOR),
                       QStringList{"--config", shop(), "--json", "--images",
                                   QStringLiteral(DEMO "/pictures"), "--language", "en"} +
                           options);
        EXPECT_EQ(doctor.exitCode(), code)
            << doctor.output().toStdString() << doctor.errors().toStdString();
        auto report = support::json(doctor.output());
        EXPECT_EQ(report["result"].toString(), code == 0 ? "ok" : "failed");
        return report;
    }

    static QList<QJsonObject> findings(const QJsonObject &report)
    {
        QList<QJsonObject> all;
        for (const auto &finding : report["findings"].toArray())
            all.append(finding.toObject());
        return all;
    }

    /// The findings of a check that are not `ok`; of all checks without a name.
    static QList<QJsonObject> problems(const QJsonObject &report, const QString &check = {})
    {
        auto found = findings(report);
        found.removeIf([&](const QJsonObject &finding) {
            return finding["status"].toString() == "ok" ||
                   !(check.isEmpty() || finding["check"].toString() == check);
        });
        return found;
    }

    /// The first finding of a check.
    static QJsonObject first(const QJsonObject &report, const QString &check)
    {
        for (const auto &finding : findings(report)) {
            if (finding["check"].toString() == check)
                return finding;
        }
        ADD_FAILURE() << check.toStdString();
        return {};
    }

    QByteArray pluginAddress = support::ownLoopbackAddress().toLatin1();
    int pluginPort = 38081;
    int adPort = 1;          // nobody is there
    QByteArray moreSettings; // behind those of the sample
};
