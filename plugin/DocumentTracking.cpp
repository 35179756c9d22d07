// Follows the receipt: each change of it becomes an UpdateDocument message.

#include <plugin/ViewConnector.h>

#include <ActionTrigger.h>
#include <BasicDocument.h>
#include <QObjectHelper.h>

#include <array>

namespace {

struct TriggerCodes
{
    int context;
    int action;
    int order;
    int result;
    int priority;
};

/// The actions after which the receipt is sent, in the host's codes.
constexpr std::array triggerTable{
    TriggerCodes{255, 197, 1, 0, 3},
    TriggerCodes{255, 137, 0, 0, 3},
    TriggerCodes{6, 131, 0, 2, 3},
};

/// The cashier's action goes on, whatever the display makes of it.
constexpr auto carryOn = static_cast<EContext::Result>(2);

} // namespace

QStringList ViewConnector::getDocumentIgnoredProps()
{
    return QStringList{
               QStringLiteral("addingAllowed"),
               QStringLiteral("basePaymentName"),
               QStringLiteral("countersSourceCardNumber"),
               QStringLiteral("countersChanged"),
               QStringLiteral("wasDeferred"),
               QStringLiteral("virtualCheck"),
               QStringLiteral("waybillNumber"),
           } +
           BasicDocument::getIgnoredProperties();
}

void ViewConnector::initTriggers()
{
    for (const auto &codes : triggerTable)
        addTrigger(ActionTrigger(
            static_cast<EContext::Code>(codes.context),
            static_cast<control::EActionType>(codes.action),
            static_cast<ActionTrigger::Order>(codes.order),
            [this](const control::Action &action) { return onDocumentModified(action); },
            static_cast<ActionTrigger::Result>(codes.result),
            static_cast<ActionTrigger::Priority>(codes.priority)));
}

void ViewConnector::setDocument(const QSharedPointer<AbstractDocument> &document)
{
    sentImages.clear();
    DocumentWatcher::setDocument(document);
    onDocumentModified(control::Action());
}

EContext::Result ViewConnector::onDocumentModified(const control::Action &)
{
    addMessage({view::Message::Type::UpdateDocument, getDocumentPayload()});
    return carryOn;
}

QVariantMap ViewConnector::getDocumentPayload() const
{
    return QObjectHelper::qobject2qvariant(document().data(), ignoredProps);
}
