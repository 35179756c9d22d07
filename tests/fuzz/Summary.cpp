// The register's report on the first line, and the display's record behind it.

#include "support/Fuzz.h"

#include <summary/Summary.h>

#include <QJsonDocument>

void fuzzOne(const QByteArray &input)
{
    const auto fields = fuzz::fields(input, 2);
    QList<QJsonObject> record;
    const auto lines = fields[1].split('\n');
    for (const auto &line : lines)
        record.append(QJsonDocument::fromJson(line).object());
    summarise(QJsonDocument::fromJson(fields[0]).object(), record).toText();
}
