#pragma once

#include <HostExport.h>
#include <ImageId.h>

#include <QByteArray>

/// A picture of the store: its identifier and, once loaded, its content. A value type.
class HOST_EXPORT Image : public ImageId
{
    Q_GADGET

public:
    Image() = default;
    /// An empty `content` stands for a picture that is known but not loaded.
    explicit Image(const ImageId &id, QByteArray content = {});

    bool isLoaded() const { return !m_content.isEmpty(); }

    /// A "data:" URI of the picture, empty while it is not loaded. `baseUri` is for stores that
    /// serve pictures from an address; this one ignores it.
    QString toUri(const QString &baseUri) const;

private:
    QByteArray m_content;
};
