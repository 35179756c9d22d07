#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>

/// Runs events one after the other, as a program does, until `condition` holds or ten seconds have
/// passed. For what takes hundreds of turns of the event loop: `support::waitFor` rests after each.
template <class Condition>
void runEventsUntil(Condition condition)
{
    using namespace std::chrono_literals;
    const QDeadlineTimer deadline(10s);
    QTimer wakeUp; // so that the deadline is looked at
    wakeUp.start(100ms);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
