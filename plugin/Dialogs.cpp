// Dialogs of the register that have a counterpart on the display: opens them there, scrolls them,
// and closes exactly the one that was opened.

#include <plugin/ViewConnector.h>

#include <Config.h>
#include <Singleton.h>
#include <Tr.h>

#include <QJsonValue>

namespace {

int dialogId(const Event &event)
{
    return event.value(QStringLiteral("dialogId"), QVariant()).toInt();
}

} // namespace

void ViewConnector::showQrPayment(const Event &event)
{
    // Read each time, so that a change takes effect with the next dialog.
    if (!Singleton<Config>::instance().boolValue(QStringLiteral("View.Logic:showQrCode"), true))
        return;

    const int id = dialogId(event);
    const QString qrCode = event.value(QStringLiteral("qrCode"), QVariant()).toString();
    const int amount = event.value(QStringLiteral("amount"), QVariant()).toInt();
    const int timeout = event.value(QStringLiteral("timeout"), QVariant()).toInt();
    dialogTypes.insert(id, view::Message::Type::QrPayment); // only now: reading may throw
    addMessage({view::Message::Type::QrPayment,
                {{QStringLiteral("qrCode"), qrCode},
                 {QStringLiteral("amount"), amount},
                 {QStringLiteral("timeout"), timeout}}});
}

void ViewConnector::showOrScrollPriceList(const Event &event)
{
    const auto dataKey = QStringLiteral("data");
    if (!event.contains(dataKey)) {
        const QString scroll = event.value(QStringLiteral("scroll"), QVariant()).toString();
        addMessage({view::Message::Type::PriceList, {{QStringLiteral("scroll"), scroll}}});
        return;
    }

    const int id = dialogId(event);
    const auto title = event.value(QStringLiteral("title"), QVariant()).value<tr::Tr>();
    // Through JSON, so that only what the display can get is queued, not a type of the host.
    const QVariant data = QJsonValue::fromVariant(event.value(dataKey, QVariant())).toVariant();
    const int columns = event.value(QStringLiteral("columns"), QVariant()).toInt();
    const QString titleText = title.ui();
    dialogTypes.insert(id, view::Message::Type::PriceList); // only now: reading may throw
    addMessage({view::Message::Type::PriceList,
                {{QStringLiteral("title"), titleText},
                 {dataKey, data},
                 {QStringLiteral("columns"), columns}}});
}

void ViewConnector::closeDialog(const Event &event)
{
    const int id = dialogId(event);
    const auto open = dialogTypes.constFind(id);
    if (open == dialogTypes.cend())
        return;
    addMessage({*open, {{QStringLiteral("close"), true}}});
    dialogTypes.remove(id); // by id: whoever hears of the message may have changed the map
}
