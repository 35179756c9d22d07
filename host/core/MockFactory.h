#pragma once

#include <QSharedPointer>

/**
 * Creates objects of T, or hands out one that was injected in their place: the seam at which a test
 * or a host replaces a service.
 *
 * Owner: the receiver shares the object.
 * Thread: every member is thread-safe.
 *
 * Only declared here, for the reason given in Singleton.h; the definitions are in
 * MockFactoryDefinition.h.
 */
template <class T>
class MockFactory
{
public:
    MockFactory() = delete;

    /// The injected instance while there is one, otherwise a new `T()`.
    static QSharedPointer<T> create();

    /// From now on `create` returns `instance`; null goes back to new objects.
    static void inject(const QSharedPointer<T> &instance);
};
