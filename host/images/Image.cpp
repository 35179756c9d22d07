#include <Image.h>

#include <QMimeDatabase>

Image::Image(const ImageId &id, const QByteArray &content) : ImageId(id)
{
    if (content.isEmpty())
        return;
    const auto mimeType = QMimeDatabase().mimeTypeForData(content).name();
    m_uri =
        QStringLiteral("data:%1;base64,%2").arg(mimeType, QString::fromLatin1(content.toBase64()));
}

Image::Image(const ImageId &id, const Image &other) : ImageId(id), m_uri(other.m_uri) {}

QString Image::toUri(const QString &) const
{
    return m_uri;
}
