#include <PictureCheck.h>

#include <PictureBytes.h>

#include <QImageReader>
#include <QMimeDatabase>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>

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
    static const std::array<EndMark, 2> marks{{
        {"image/jpeg", QByteArrayLiteral("\xFF\xDA"), QByteArrayLiteral("\xFF\xD9")},
        {"image/png", QByteArrayLiteral("IDAT"), QByteArrayLiteral("IEND")},
    }};
    return std::any_of(marks.begin(), marks.end(), [&](const EndMark &mark) {
        return mimeType == QLatin1String(mark.mimeType) &&
               content.lastIndexOf(mark.end) <= content.lastIndexOf(mark.start);
    });
}

/// Qt compares each attribute of an element with all the others, however many there are.
constexpr int maxAttributes = 1000;

bool hasElementOfManyAttributes(const QByteArray &content)
{
    int attributes = 0;
    return std::any_of(content.begin(), content.end(), [&](char c) {
        attributes = c == '<' ? 0 : attributes + (c == '=' ? 1 : 0);
        return attributes > maxAttributes;
    });
}

/// Nor does it stop comparing those that a document declares.
constexpr qsizetype maxDeclarationBytes = 4096;

bool hasLongDeclarations(const QByteArray &content)
{
    qsizetype bytes = 0;
    for (auto at = content.indexOf("<!ATTLIST"); at >= 0;
         at = content.indexOf("<!ATTLIST", at + 1)) {
        const auto end = content.indexOf('<', at + 1);
        bytes += (end < 0 ? content.size() : end) - at;
    }
    return bytes > maxDeclarationBytes;
}

/// A document may name what it stands for in up to 4096 characters, and that as often as it likes.
constexpr qsizetype maxReferences = 1000;

bool hasManyReferences(const QByteArray &content)
{
    return content.contains("<!ENTITY") && content.count('&') > maxReferences;
}

QString xmlProblem(const QByteArray &content, PictureBytes &bytes)
{
    if (hasManyReferences(content))
        return QStringLiteral("больше %1 ссылок на сущности").arg(maxReferences);
    if (hasElementOfManyAttributes(content))
        return QStringLiteral("больше %1 атрибутов у элемента").arg(maxAttributes);
    if (hasLongDeclarations(content))
        return QStringLiteral("объявления атрибутов больше %1 байт").arg(maxDeclarationBytes);
    QXmlStreamReader xml(&bytes);
    while (!xml.atEnd())
        xml.readNext();
    if (!xml.hasError())
        return {};
    return QStringLiteral("ошибка XML в строке %1: %2")
        .arg(xml.lineNumber())
        .arg(xml.errorString());
}

QString rasterProblem(PictureBytes &bytes)
{
    QImageReader reader(&bytes);
    const auto size = reader.size();
    if (qint64{size.width()} * size.height() > maxPicturePixels)
        return QStringLiteral("больше %1 пикселей").arg(maxPicturePixels);
    return reader.read().isNull() ? QStringLiteral("файл повреждён") : QString();
}

QString contentProblem(const QByteArray &content, PictureBytes &bytes)
{
    const auto mimeType = QMimeDatabase().mimeTypeForData(content).name();
    if (!mimeType.startsWith(QLatin1String("image/")))
        return QStringLiteral("это не картинка, а %1").arg(mimeType);
    if (mimeType == QLatin1String("image/svg+xml"))
        return xmlProblem(content, bytes);
    if (isCutOff(content, mimeType))
        return QStringLiteral("файл обрывается");
    if (QImageReader::supportedMimeTypes().contains(mimeType.toLatin1()))
        return rasterProblem(bytes);
    return {}; // the display may know more formats than this library
}

} // namespace

QString pictureProblem(const QByteArray &content, const std::stop_token &stop)
{
    PictureBytes bytes(content, stop, maxPictureTime);
    auto problem = contentProblem(content, bytes);
    if (!bytes.isBrokenOff()) // what a decoder makes of that depends on the format
        return problem;
    return QStringLiteral("распаковка длится дольше %1 с").arg(maxPictureTime.count());
}
