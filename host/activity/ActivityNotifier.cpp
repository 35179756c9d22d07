#include <ActivityNotifier.h>

#include <SingletonDefinition.h>

#include <QThread>

template class Singleton<ActivityNotifier>;

ActivityNotifier::ActivityNotifier()
{
    qRegisterMetaType<Event>();
}

void ActivityNotifier::subscribe(BaseActivityListener *listener, const QSet<int> &codes)
{
    const QMutexLocker guard(&m_mutex);
    for (const int code : codes) {
        auto &listeners = m_listeners[code];
        listeners.removeAll(nullptr);
        if (!listeners.contains(listener))
            listeners.append(listener);
    }
}

qsizetype ActivityNotifier::notify(const Event &event) const
{
    qsizetype delivered = 0;
    for (const auto &listener : listenersOf(event.getCode())) {
        if (listener.isNull())
            continue;
        ++delivered;
        if (listener->thread() == QThread::currentThread())
            listener->handleEvent(event);
        else
            QMetaObject::invokeMethod(listener.data(), "handleEvent", Qt::QueuedConnection,
                                      Q_ARG(Event, event));
    }
    return delivered;
}

QList<QPointer<BaseActivityListener>> ActivityNotifier::listenersOf(int code) const
{
    const QMutexLocker guard(&m_mutex);
    return m_listeners.value(code);
}
