#include "Campaign.h"

#include <QString>

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <random>

namespace campaign {

namespace {

bool isFull()
{
    return qEnvironmentVariable("CAMPAIGN") == QLatin1String("full");
}

quint32 chosenSeed()
{
    constexpr quint32 usual = 1;
    bool isGiven = false;
    const auto given = qEnvironmentVariable("CAMPAIGN_SEED").toUInt(&isGiven);
    const auto seed = isGiven ? given : isFull() ? std::random_device()() : usual;
    std::printf("[ campaign ] CAMPAIGN_SEED=%u\n", seed);
    return seed;
}

/// A property's name may only have letters, digits and underscores.
std::string propertyName(std::string what)
{
    for (auto &character : what) {
        if (!std::isalnum(static_cast<unsigned char>(character)))
            character = '_';
    }
    return what;
}

} // namespace

int scaled(int full, int brief)
{
    return isFull() ? full : brief;
}

quint32 seed()
{
    static const auto seed = chosenSeed();
    return seed;
}

void report(const std::string &what, double value, const std::string &unit)
{
    std::printf("[ campaign ] %s: %.10g%s%s\n", what.c_str(), value, unit.empty() ? "" : " ",
                unit.c_str());
    std::fflush(stdout);
    testing::Test::RecordProperty(propertyName(what), std::to_string(value));
}

} // namespace campaign
