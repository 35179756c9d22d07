#include <common/QuitOnSignal.h>

#include <QSocketNotifier>

#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

int wakeUp = -1;

/// Only what is safe in a signal handler: wakes the event loop, and leaves both signals to the
/// system from now on, since a second one may be the other.
void onSignal(int)
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(wakeUp, &one, sizeof one);
}

} // namespace

QuitOnSignal::QuitOnSignal(QObject *parent) : QObject(parent)
{
    wakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    auto *notifier = new QSocketNotifier(wakeUp, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT quitRequested();
    });

    struct sigaction action
    {
    };
    action.sa_handler = &onSignal;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

QuitOnSignal::~QuitOnSignal()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    close(wakeUp);
    wakeUp = -1;
}
