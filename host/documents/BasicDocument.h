#pragma once

#include <AbstractDocument.h>

#include <QStringList>

/// A document that counts its changes. Owner and thread as for AbstractDocument.
class HOST_EXPORT BasicDocument : public AbstractDocument
{
    Q_OBJECT
    Q_PROPERTY(int modelRevision READ modelRevision)

public:
    explicit BasicDocument(QObject *parent = nullptr);
    ~BasicDocument() override;

    /// The properties that belong to the object rather than to the document's content.
    static QStringList getIgnoredProperties();

    /// Grows by one with each change.
    int modelRevision() const { return m_modelRevision; }

protected:
    void markChanged() { ++m_modelRevision; }

private:
    int m_modelRevision = 0;
};
