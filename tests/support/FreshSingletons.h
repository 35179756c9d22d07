#pragma once

#include <ActivityNotifier.h>
#include <Config.h>
#include <ImageDao.h>
#include <Singleton.h>

#include <memory>

namespace support {

/// Gives a test host singletons of its own, without any settings, and takes them away after it.
class FreshSingletons
{
public:
    FreshSingletons() { reset(); }
    ~FreshSingletons() { reset(); }
    FreshSingletons(const FreshSingletons &) = delete;
    FreshSingletons &operator=(const FreshSingletons &) = delete;

    Config &config() const { return Singleton<Config>::instance(); }
    ActivityNotifier &notifier() const { return Singleton<ActivityNotifier>::instance(); }
    ImageDao &images() const { return Singleton<ImageDao>::instance(); }

private:
    static void reset()
    {
        Singleton<Config>::replace(nullptr);
        Singleton<ActivityNotifier>::replace(nullptr);
        Singleton<ImageDao>::replace(nullptr);
    }
};

} // namespace support
