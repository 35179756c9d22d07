#include <register/GoodsPictures.h>

#include <register/Goods.h>

#include <ImageDao.h>
#include <Singleton.h>

#include <QDir>

void addGoodsPictures(const Goods &goods, const QString &imagesFolder)
{
    auto &images = Singleton<ImageDao>::instance();
    for (const auto &item : goods.all()) {
        if (item.picture.isEmpty())
            continue;
        const auto file = QDir(imagesFolder).absoluteFilePath(item.picture);
        images.addFile({ImageId::GoodsCode, item.code}, file);
        if (!item.barcode.isEmpty())
            images.addFile({ImageId::Barcode, item.barcode}, file);
    }
}
