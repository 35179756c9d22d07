#pragma once

#include <Event.h>
#include <HostExport.h>

#include <QObject>

/**
 * Receives the events it has subscribed to at the ActivityNotifier.
 *
 * Owner: whoever created it; a destroyed listener drops out of its subscriptions.
 * Thread: `handleEvent` runs on the listener's own thread.
 * Errors: what `handleEvent` throws reaches the code that reported the event.
 *
 * A subclass declares `handleEvent` as a slot, since events from other threads arrive by its name.
 */
class HOST_EXPORT BaseActivityListener : public QObject
{
    Q_OBJECT

public:
    explicit BaseActivityListener(QObject *parent = nullptr);
    ~BaseActivityListener() override;

    virtual void handleEvent(const Event &event) = 0;
};
