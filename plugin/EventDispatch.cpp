// Sorts the register's events, and passes on those that need no translation.

#include <plugin/HostEventCode.h>
#include <plugin/ViewConnector.h>

#include <SecondScreen.h>

namespace {

constexpr int hiddenContent = 0;

} // namespace

void ViewConnector::handleEvent(const Event &event)
{
    switch (static_cast<HostEventCode>(event.getCode())) {
    case HostEventCode::QrPaymentDialog:
        return showQrPayment(event);
    case HostEventCode::PaymentDraftUpdate:
        return sendPaymentDraft(event);
    case HostEventCode::SecondScreenContent:
        return sendContent(event);
    case HostEventCode::DialogClosed:
        return closeDialog(event);
    case HostEventCode::PriceListDialog:
        return showOrScrollPriceList(event);
    }
}

void ViewConnector::sendContent(const Event &event)
{
    const events::SecondScreen screen(event);
    const QVariant data = screen.data();
    const QString type = screen.contentTypeStr();
    const bool hide = screen.contentType() == hiddenContent;
    addMessage({view::Message::Type::Content,
                {{QStringLiteral("data"), data},
                 {QStringLiteral("type"), type},
                 {QStringLiteral("hide"), hide}}});
}

void ViewConnector::sendPaymentDraft(const Event &event)
{
    addMessage({view::Message::Type::PaymentDraft, event.getArguments()});
}
