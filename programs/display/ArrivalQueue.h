#pragma once

#include <display/Arrival.h>

#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>

/**
 * The messages that wait while the display plays at being slow. They are answered in the order in
 * which they came, whatever becomes of the delay: a late one must not take the place of a newer
 * one.
 *
 * Owner: the display. Thread: the main thread. Shut-down: what waits is left to its requests.
 */
class ArrivalQueue : public QObject
{
    Q_OBJECT

public:
    /// Beyond this the oldest is answered early: nobody sees when a client that waits gives up,
    /// and those that have given up must not keep all others out.
    static constexpr std::size_t maxWaiting = 16;

    using Handler = std::function<void(Arrival)>;

    /// `answer` is given each when its time has come.
    ArrivalQueue(Handler answer, int delayMs);

    void add(Arrival arrival);
    std::size_t size() const { return m_waiting.size(); }
    /// Holds for those that wait, too.
    void setDelay(int ms);
    /// Takes out all that wait.
    std::deque<Arrival> takeAll();

private:
    void answerDue();

    const Handler m_answer;
    int m_delayMs;
    std::deque<Arrival> m_waiting;
    QTimer m_timer;
};
