#include <PictureCheck.h>

#include <QBuffer>
#include <QImageReader>
#include <QMimeDatabase>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

/// A file whose last `start` has no `end` after it was cut off: the decoder of JPEG fills up what
/// is missing and reports no error.
struct EndMark
{
    const char *mimeType;
    QByteArray start;
    QByteArray end;
};

bool isCutOff(const QByteArray &content, const QString &mimeType)
{
    const EndMark marks[] = {
        {"image/jpeg", QByteArrayLiteral("\xFF\xDA"), QByteArrayLiteral("\xFF\xD9")},
        {"image/png", QByteArrayLiteral("IDAT"), QByteArrayLiteral("IEND")},
    };
    return std::any_of(std::begin(marks), std::end(marks), [&](const EndMark &mark) {
        return mimeType == QLatin1String(mark.mimeType) &&
               content.lastIndexOf(mark.end) <= content.lastIndexOf(mark.start);
    });
}

QString xmlProblem(const QByteArray &content)
{
    QXmlStreamReader xml(content);
    while (!xml.atEnd())
        xml.readNext();
    if (!xml.hasError())
        return {};
    return QStringLiteral("ошибка XML в строке %1: %2")
        .arg(xml.lineNumber())
        .arg(xml.errorString());
}

QString rasterProblem(const QByteArray &content)
{
    QBuffer buffer;
    buffer.setData(content);
    QImageReader reader(&buffer);
    const auto size = reader.size();
    if (qint64{size.width()} * size.height() > maxPicturePixels)
        return QStringLiteral("больше %1 пикселей").arg(maxPicturePixels);
    return reader.read().isNull() ? QStringLiteral("файл повреждён") : QString();
}

} // namespace

QString pictureProblem(const QByteArray &content)
{
    const auto mimeType = QMimeDatabase().mimeTypeForData(content).name();
    if (!mimeType.startsWith(QLatin1String("image/")))
        return QStringLiteral("это не картинка, а %1").arg(mimeType);
    if (mimeType == QLatin1String("image/svg+xml"))
        return xmlProblem(content);
    if (isCutOff(content, mimeType))
        return QStringLiteral("файл обрывается");
    if (QImageReader::supportedMimeTypes().contains(mimeType.toLatin1()))
        return rasterProblem(content);
    return {}; // the display may know more formats than this library
}
