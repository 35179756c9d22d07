#include "WakeUp.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>

WakeUp::WakeUp()
    : m_event(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), m_error(m_event < 0 ? errno : 0)
{
}

WakeUp::~WakeUp()
{
    if (m_error == 0)
        ::close(m_event);
}

void WakeUp::wake() const
{
    ::eventfd_write(m_event, 1);
}

void WakeUp::waitFor(int first, int second, std::chrono::milliseconds atMost) const
{
    std::array<pollfd, 3> watched{{{first, POLLIN, 0}, {second, POLLIN, 0}, {m_event, POLLIN, 0}}};
    ::poll(watched.data(), watched.size(), static_cast<int>(atMost.count()));
    if (watched.back().revents == 0)
        return;
    eventfd_t count = 0;
    ::eventfd_read(m_event, &count);
}
