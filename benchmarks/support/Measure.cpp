#include <support/Measure.h>

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <fstream>

namespace bench {

std::chrono::nanoseconds timeOf(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::steady_clock::now() - start;
}

std::size_t residentBytes()
{
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

std::chrono::nanoseconds processCpuTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::chrono::nanoseconds percentile(std::vector<std::chrono::nanoseconds> &times, double share)
{
    std::sort(times.begin(), times.end());
    const auto rank = std::ceil(share * static_cast<double>(times.size()));
    return times.at(static_cast<std::size_t>(std::max(1.0, rank)) - 1);
}

} // namespace bench
