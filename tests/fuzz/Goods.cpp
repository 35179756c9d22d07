// The shop's catalogue.

#include "support/Fuzz.h"

#include <register/Goods.h>

#include <ConfigError.h>

void fuzzOne(const QByteArray &input)
{
    try {
        const auto goods = Goods::fromFile(fuzz::inFile(input));
        for (const auto &item : goods.all())
            fuzz::require(goods.find(item.code) != nullptr, "every article is found by its code");
    } catch (const ConfigError &) {
        return;
    }
}
