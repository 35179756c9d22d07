#include <register/Till.h>

#include <register/EventCode.h>

#include <ActivityNotifier.h>
#include <BasicDocument.h>
#include <BasicPlugin.h>
#include <DocumentWatcher.h>
#include <QObjectHelper.h>
#include <Singleton.h>

namespace {

const auto updateDocument = QStringLiteral("UpdateDocument");

int dialogId(const Event &event)
{
    return event.value(QStringLiteral("dialogId"), QVariant()).toInt();
}

} // namespace

Till::Till(const QString &pluginFile) : m_loader(pluginFile)
{
    m_runner.addPlugin(m_loader.plugin());
    m_askedFor.follow(m_loader.object());
}

Till::~Till()
{
    m_runner.removePlugin(m_loader.plugin());
}

bool Till::init()
{
    // What follows the configuration is the first advertisement, if there is any.
    using Scope = AskedFor::Scope;
    const Scope scope(m_askedFor, QStringLiteral("Configure"), Scope::Counts::First);
    return m_loader.plugin()->init();
}

bool Till::deinit()
{
    return m_loader.plugin()->deinit();
}

void Till::setDocument(const QSharedPointer<AbstractDocument> &document)
{
    const AskedFor::Scope scope(m_askedFor, updateDocument);
    m_document = document;
    if (auto *watcher = m_loader.documentWatcher())
        watcher->setDocument(document);
}

QJsonObject Till::documentAsSent() const
{
    return QJsonObject::fromVariantMap(
        QObjectHelper::qobject2qvariant(m_document.data(), BasicDocument::getIgnoredProperties()));
}

void Till::runAction(const control::Action &action)
{
    const AskedFor::Scope scope(m_askedFor, updateDocument);
    m_runner.run(action);
}

void Till::notify(const Event &event)
{
    const QString type = messageTypeOf(event);
    const AskedFor::Scope scope(m_askedFor, type);
    Singleton<ActivityNotifier>::instance().notify(event);

    const bool isDialog = event.getCode() == QrPaymentDialog || event.getCode() == PriceListDialog;
    if (isDialog && scope.wasAsked())
        m_shownDialogs.insert(dialogId(event), type);
}

/// Which message an event asks for, if any: a dialog that is closed is told to the view that showed
/// it.
QString Till::messageTypeOf(const Event &event) const
{
    switch (event.getCode()) {
    case QrPaymentDialog:
        return QStringLiteral("QrPayment");
    case PriceListDialog:
        return QStringLiteral("PriceList");
    case SecondScreenContent:
        return QStringLiteral("Content");
    case PaymentDraftUpdate:
        return QStringLiteral("PaymentDraft");
    case DialogClosed:
        return m_shownDialogs.value(dialogId(event));
    default:
        return {};
    }
}
