#pragma once

#include <doctor/Finding.h>

#include <QStringList>

namespace doctor {

struct GoodsResult
{
    Findings findings;
    QStringList pictures; ///< the names of the goods' picture files
};

/// Whether the register can read the catalogue that "Shop:goods" names, relative to the settings
/// file.
GoodsResult checkGoods(const QString &setting, const QString &configFile);

} // namespace doctor
