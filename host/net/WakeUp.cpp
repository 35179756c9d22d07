#include "WakeUp.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>

WakeUp::WakeUp() : m_event(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

WakeUp::~WakeUp()
{
    ::close(m_event);
}

void WakeUp::wake() const
{
    ::eventfd_write(m_event, 1);
}

void WakeUp::waitFor(int descriptor, std::chrono::milliseconds atMost) const
{
    std::array<pollfd, 2> watched{{{descriptor, POLLIN, 0}, {m_event, POLLIN, 0}}};
    ::poll(watched.data(), watched.size(), static_cast<int>(atMost.count()));
    if (watched.back().revents == 0)
        return;
    eventfd_t count = 0;
    ::eventfd_read(m_event, &count);
}
