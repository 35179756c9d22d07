#pragma once

#include <HostExport.h>
#include <ImageId.h>

#include <QByteArray>
#include <QString>

/// A picture of the store: its identifier and, once loaded, its content. A value type.
class HOST_EXPORT Image : public ImageId
{
    Q_GADGET

public:
    Image() = default;
    /// An empty `content` stands for a picture that is known but not loaded.
    explicit Image(const ImageId &id, const QByteArray &content = {});
    /// The same picture under another identifier.
    Image(const ImageId &id, const Image &other);

    bool isLoaded() const { return !m_uri.isEmpty(); }

    /// A "data:" URI of the picture, empty while it is not loaded. `baseUri` is for stores that
    /// serve pictures from an address; this one ignores it.
    QString toUri(const QString &baseUri) const;

private:
    QString m_uri; // made once and shared by copies and by all who were given it
};
