#include <Image.h>

#include <QMimeDatabase>

#include <utility>

Image::Image(const ImageId &id, QByteArray content) : ImageId(id), m_content(std::move(content)) {}

QString Image::toUri(const QString &) const
{
    if (!isLoaded())
        return {};
    const auto mimeType = QMimeDatabase().mimeTypeForData(m_content).name();
    return QStringLiteral("data:%1;base64,%2")
        .arg(mimeType, QString::fromLatin1(m_content.toBase64()));
}
