#pragma once

#include <QObject>

/**
 * Turns the first SIGINT or SIGTERM into a signal of the event loop, so that a program ends in
 * order. A second one ends the process at once, as ever.
 *
 * Owner: main, one in a process. Thread: the main thread.
 */
class QuitOnSignal : public QObject
{
    Q_OBJECT

public:
    explicit QuitOnSignal(QObject *parent = nullptr);
    ~QuitOnSignal() override;

Q_SIGNALS:
    void quitRequested();
};
