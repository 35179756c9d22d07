#pragma once

#include <BaseActivityListener.h>
#include <Event.h>
#include <HostExport.h>
#include <Singleton.h>

#include <QHash>
#include <QList>
#include <QMutex>
#include <QPointer>
#include <QSet>

/**
 * Brings the host's events to the listeners that subscribed to their codes.
 *
 * Owner: the host, as Singleton<ActivityNotifier>; it does not own the listeners.
 * Thread: every member is thread-safe. A listener must not be destroyed while another thread
 * notifies.
 * Errors: what a listener throws in a direct delivery reaches the caller of `notify`.
 */
class HOST_EXPORT ActivityNotifier
{
public:
    ActivityNotifier();

    /// `listener` receives events with these codes from now on; codes that it has already are not
    /// doubled.
    void subscribe(BaseActivityListener *listener, const QSet<int> &codes);

    /// Delivers `event` to its listeners in the order in which they subscribed: by a direct call to
    /// those that live on this thread, through the slot `handleEvent(Event)`, later, to the others.
    /// Returns how many listeners there were.
    qsizetype notify(const Event &event) const;

private:
    QList<QPointer<BaseActivityListener>> listenersOf(int code) const;

    mutable QMutex m_mutex;
    QHash<int, QList<QPointer<BaseActivityListener>>> m_listeners; // by code, guarded by m_mutex
};

extern template class HOST_EXPORT Singleton<ActivityNotifier>;
