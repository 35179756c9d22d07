#pragma once

#include "TillFixture.h"

#include <register/Cashier.h>
#include <register/CashierCommands.h>

#include <QFile>
#include <QTemporaryDir>

/// A cashier of a shop with three articles: 100 tea for 10.00, 101 sugar for 0.99 a kilogram, 102 a
/// bag for nothing and without a bar code.
class CashierFixture : public TillFixture
{
protected:
    CashierFixture()
    {
        addCashierCommands(commands, cashier);
        till.init();
        calls();
    }

    static Goods goods()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("goods.toml"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"(
goods = [
  { code = "100", barcode = "4600", name = "Чай", price = 1000 },
  { code = "101", barcode = "2100", name = "Сахар", unit = "кг", price = 99 },
  { code = "102", name = "Пакет", price = 0 },
]
)");
        file.close();
        return Goods::fromFile(file.fileName());
    }

    const Receipt &receipt() const { return *till.receipt(); }

    Cashier cashier{till, goods()};
};
