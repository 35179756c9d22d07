#include <doctor/GoodsCheck.h>

#include <register/Goods.h>

#include <ConfigError.h>

#include <QDir>
#include <QFileInfo>

namespace doctor {

namespace {

const auto check = QStringLiteral("goods");

QStringList picturesOf(const Goods &goods)
{
    QStringList names;
    for (const auto &item : goods.all()) {
        if (!item.picture.isEmpty())
            names.append(item.picture);
    }
    return names;
}

} // namespace

GoodsResult checkGoods(const QString &setting, const QString &configFile)
{
    if (setting.isEmpty())
        return {{skipped(check,
                         {"Каталог товаров не проверен: Shop:goods не указан.",
                          "The catalogue was not checked: Shop:goods is not set."},
                         {"Если товары должны быть из каталога, укажите в [Shop] goods.",
                          "If the goods are to come from a catalogue, set goods in [Shop]."})},
                {}};
    const auto file = QFileInfo(configFile).absoluteDir().absoluteFilePath(setting);
    try {
        const auto goods = Goods::fromFile(file);
        return {{ok(check,
                    Text("Каталог товаров %1: товаров %2.", "Catalogue %1: %2 articles.")
                        .with(file, goods.all().size()),
                    {{QStringLiteral("file"), file},
                     {QStringLiteral("articles"), goods.all().size()}})},
                picturesOf(goods)};
    } catch (const ConfigError &error) {
        return {{failed(check,
                        Text("Каталог товаров не читается, касса с ним не запустится: %1.",
                             "The catalogue cannot be read, and the register does not start: %1.")
                            .with(QString::fromUtf8(error.what())),
                        {"Исправьте файл в указанном месте или путь в Shop:goods.",
                         "Mend the file at that place, or the path in Shop:goods."},
                        {{QStringLiteral("file"), file}})},
                {}};
    }
}

} // namespace doctor
