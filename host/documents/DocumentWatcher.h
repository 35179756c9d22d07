#pragma once

#include <AbstractDocument.h>
#include <HostExport.h>

#include <QSharedPointer>

/**
 * Holds the document that the register is working on.
 *
 * Owner: its subclass, the plug-in. The document is shared with the host.
 * Thread: the host's main thread.
 */
class HOST_EXPORT DocumentWatcher
{
public:
    DocumentWatcher() = default;
    virtual ~DocumentWatcher();
    Q_DISABLE_COPY_MOVE(DocumentWatcher)

    /// Called by the host when another document becomes the current one; null when there is none.
    virtual void setDocument(const QSharedPointer<AbstractDocument> &document);

    QSharedPointer<AbstractDocument> document() const { return m_document; }

private:
    QSharedPointer<AbstractDocument> m_document;
};
