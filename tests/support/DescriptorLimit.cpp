#include <support/DescriptorLimit.h>

#include <unistd.h>

namespace support {

namespace {

rlimit present()
{
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return limit;
}

} // namespace

int lowestFreeDescriptor()
{
    const int descriptor = ::dup(STDERR_FILENO);
    ::close(descriptor);
    return descriptor;
}

DescriptorLimit::DescriptorLimit(rlim_t limit) : m_previous(present())
{
    const rlimit wanted{limit, m_previous.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &wanted);
}

DescriptorLimit::~DescriptorLimit()
{
    ::setrlimit(RLIMIT_NOFILE, &m_previous);
}

DescriptorLimit DescriptorLimit::highest()
{
    return DescriptorLimit(present().rlim_max);
}

} // namespace support
