#include <register/GoodsRoutes.h>

#include <pages/PageAnswers.h>
#include <pages/PageRoutes.h>
#include <register/Goods.h>

#include <PictureFile.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeDatabase>
#include <QUrl>

namespace {

constexpr int notFound = 404;
const auto get = QStringLiteral("GET");

/// The file of an article's picture; empty if there is none.
QString pictureFile(const GoodsItem &item, const QString &imagesFolder)
{
    if (imagesFolder.isEmpty() || item.picture.isEmpty())
        return {};
    const auto file = QDir(imagesFolder).absoluteFilePath(item.picture);
    return QFileInfo(file).isFile() ? file : QString();
}

QString picturePath(const GoodsItem &item)
{
    return QStringLiteral("/pictures/") + item.code;
}

QJsonObject toJson(const GoodsItem &item, bool hasPicture)
{
    const auto url = QString::fromLatin1(QUrl::toPercentEncoding(picturePath(item), "/"));
    return {{QStringLiteral("code"), item.code},
            {QStringLiteral("barcode"), item.barcode},
            {QStringLiteral("name"), item.name},
            {QStringLiteral("unit"), item.unit},
            {QStringLiteral("price"), item.price},
            {QStringLiteral("picture"), hasPicture ? QJsonValue(url) : QJsonValue()}};
}

void answerWithPicture(HttpServer &server, const QString &fileName)
{
    const auto picture = readUncheckedPictureFile(fileName); // the browser shows what it can
    if (!picture.problem.isEmpty()) {
        answerWithText(server, notFound, QStringLiteral("the picture cannot be read"));
        return;
    }
    const auto type = QMimeDatabase().mimeTypeForFileNameAndData(fileName, picture.content);
    answerWith(server, type.name(), picture.content);
}

} // namespace

void addGoodsRoutes(PageRoutes &routes, const Goods &goods, const QString &imagesFolder)
{
    QJsonArray catalogue;
    for (const auto &item : goods.all()) {
        const auto file = pictureFile(item, imagesFolder);
        catalogue.append(toJson(item, !file.isEmpty()));
        if (!file.isEmpty())
            routes.add(get, picturePath(item), [file](const PageRequest &request) {
                answerWithPicture(request.server, file);
            });
    }
    routes.add(get, QStringLiteral("/goods"), [catalogue](const PageRequest &request) {
        answerWithJson(request.server, QJsonDocument(catalogue));
    });
}
