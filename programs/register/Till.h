#pragma once

#include <register/AskedFor.h>

#include <Action.h>
#include <ActionRunner.h>
#include <Event.h>
#include <PluginLoader.h>
#include <Receipt.h>

#include <QJsonObject>
#include <QMap>
#include <QSharedPointer>
#include <QString>

/**
 * The register as the plug-in sees it: loads the plug-in, keeps the current document, runs actions
 * and reports events.
 *
 * Owner: main. Thread: the main thread.
 * Errors: the constructor throws PluginError.
 * Shut-down: the destructor destroys the plug-in; `deinit` is the caller's.
 */
class Till
{
public:
    explicit Till(const QString &pluginFile);
    ~Till();
    Q_DISABLE_COPY_MOVE(Till)

    bool init();
    bool deinit();

    void setDocument(const QSharedPointer<AbstractDocument> &document);
    QSharedPointer<AbstractDocument> document() const { return m_document; }
    /// The current document if it is a receipt, otherwise null.
    QSharedPointer<Receipt> receipt() const { return m_document.dynamicCast<Receipt>(); }
    /// The current document as the plug-in sends it; empty without one.
    QJsonObject documentAsSent() const;

    void runAction(const control::Action &action);
    void notify(const Event &event);

    const AskedFor &askedFor() const { return m_askedFor; }

private:
    QString messageTypeOf(const Event &event) const;

    PluginLoader m_loader;
    ActionRunner m_runner;
    AskedFor m_askedFor;
    QSharedPointer<AbstractDocument> m_document;
    QMap<int, QString> m_shownDialogs; // message type by dialog id
};
