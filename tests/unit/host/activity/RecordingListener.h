#pragma once

#include <BaseActivityListener.h>
#include <Locker.h>

#include <QList>
#include <QThread>

#include <mutex>

/// Notes which events arrived and on which thread.
class RecordingListener : public BaseActivityListener
{
    Q_OBJECT

public:
    struct Arrival
    {
        Event event;
        QThread *thread;
    };

    using BaseActivityListener::BaseActivityListener;

    QList<Arrival> arrivals() const { return *m_arrivals.lock(); }

    QList<int> codes() const
    {
        QList<int> codes;
        for (const auto &arrival : arrivals())
            codes.append(arrival.event.getCode());
        return codes;
    }

public Q_SLOTS:
    void handleEvent(const Event &event) override
    {
        m_arrivals.lock()->append({event, QThread::currentThread()});
    }

private:
    Locker<QList<Arrival>, std::mutex> m_arrivals;
};
