#include <register/Report.h>

#include <common/UsageError.h>
#include <register/Till.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

void writeReport(const QString &fileName, const Till &till)
{
    QJsonObject asked;
    const auto &times = till.askedFor().times();
    for (auto type = times.begin(); type != times.end(); ++type) {
        QJsonArray array;
        for (const double time : *type)
            array.append(time);
        asked.insert(type.key(), array);
    }
    const QJsonObject report{{QStringLiteral("asked"), asked},
                             {QStringLiteral("document"), till.documentAsSent()}};

    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QJsonDocument(report).toJson(QJsonDocument::Compact)) < 0 || !file.flush())
        throw UsageError(QStringLiteral("--report %1: %2.").arg(fileName, file.errorString()));
}
