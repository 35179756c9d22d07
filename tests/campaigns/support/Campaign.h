#pragma once

#include <QtGlobal>

#include <string>

/// How long a campaign goes on and what its random choices come from. CAMPAIGN=full in the
/// environment asks for the whole of it, otherwise it is the short form that every test run has;
/// CAMPAIGN_SEED repeats an earlier run. Thread: any.
namespace campaign {

/// A count or duration: `full` in a campaign, `brief` among the other tests.
int scaled(int full, int brief);

/// Whether this is the whole campaign, which has the machine for itself.
inline bool isWhole()
{
    return scaled(1, 0) == 1;
}

/// What random numbers start from: that of CAMPAIGN_SEED, else a new one in a campaign and always
/// the same one among the other tests. The first call prints it.
quint32 seed();

/// Prints a measured result, and keeps it as a property of the running test.
void report(const std::string &what, double value, const std::string &unit = {});

} // namespace campaign
