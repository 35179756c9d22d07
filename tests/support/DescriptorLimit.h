#pragma once

#include <sys/resource.h>

namespace support {

/// The descriptor that this process would be given next; as a limit it leaves none.
int lowestFreeDescriptor();

/// Another limit of this process's file descriptors, while it lives.
class DescriptorLimit
{
public:
    explicit DescriptorLimit(rlim_t limit);
    ~DescriptorLimit();
    DescriptorLimit(const DescriptorLimit &) = delete;
    DescriptorLimit &operator=(const DescriptorLimit &) = delete;

    /// As many as the system grants.
    static DescriptorLimit highest();

private:
    rlimit m_previous;
};

} // namespace support
