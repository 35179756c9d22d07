#include <display/ArrivalQueue.h>

#include <common/MonotonicClock.h>

#include <cmath>
#include <utility>

ArrivalQueue::ArrivalQueue(Handler answer, int delayMs)
    : m_answer(std::move(answer)), m_delayMs(delayMs)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &ArrivalQueue::answerDue);
}

void ArrivalQueue::add(Arrival arrival)
{
    m_waiting.push_back(std::move(arrival));
    answerDue();
}

void ArrivalQueue::setDelay(int ms)
{
    m_delayMs = ms;
    answerDue();
}

std::deque<Arrival> ArrivalQueue::takeAll()
{
    return std::exchange(m_waiting, {});
}

void ArrivalQueue::answerDue()
{
    while (!m_waiting.empty()) {
        const double restMs = m_waiting.front().ms + m_delayMs - monotonicMs();
        if (restMs > 0 && m_waiting.size() <= maxWaiting) {
            m_timer.start(static_cast<int>(std::ceil(restMs)));
            return;
        }
        auto arrival = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_answer(std::move(arrival));
    }
    m_timer.stop();
}
