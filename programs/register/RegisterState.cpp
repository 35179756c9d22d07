#include <register/RegisterState.h>

#include <register/Cashier.h>
#include <register/Till.h>

#include <Config.h>
#include <Singleton.h>

#include <QJsonArray>

namespace {

QString displayAddress()
{
    const auto address =
        Singleton<Config>::instance().stringValue(QStringLiteral("ViewConnector:server"));
    return address.isEmpty() ? QStringLiteral("http://127.0.0.1:38080") : address;
}

} // namespace

QJsonObject registerState(const Till &till, const Cashier &cashier)
{
    QJsonArray dialogs;
    for (const auto &dialog : cashier.dialogs())
        dialogs.append(
            QJsonObject{{QStringLiteral("id"), dialog.id}, {QStringLiteral("kind"), dialog.kind}});
    return {{QStringLiteral("display"), displayAddress()},
            {QStringLiteral("receipt"),
             till.document() ? QJsonValue(till.documentAsSent()) : QJsonValue()},
            {QStringLiteral("dialogs"), dialogs}};
}
