#include <register/CommandAnswer.h>

#include <common/JsonLine.h>

#include <QJsonDocument>

QByteArray CommandAnswer::toLine() const
{
    const auto nKey = QStringLiteral("n");
    const auto doKey = QStringLiteral("do");
    const auto okKey = QStringLiteral("ok");
    return isOk() ? jsonLine({{nKey, number}, {doKey, name}, {okKey, true}})
                  : jsonLine({{nKey, number},
                              {doKey, name},
                              {okKey, false},
                              {QStringLiteral("error"), error}});
}

QJsonObject CommandAnswer::toJson() const
{
    return QJsonDocument::fromJson(toLine()).object();
}
