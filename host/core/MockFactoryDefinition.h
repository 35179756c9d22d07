#pragma once

#include <MockFactory.h>

#include <Locker.h>

#include <mutex>

namespace mockfactory {

template <class T>
Locker<QSharedPointer<T>, std::mutex> &injected()
{
    static auto &only = *new Locker<QSharedPointer<T>, std::mutex>;
    return only;
}

} // namespace mockfactory

template <class T>
QSharedPointer<T> MockFactory<T>::create()
{
    const QSharedPointer<T> instance = *mockfactory::injected<T>().lock();
    return instance ? instance : QSharedPointer<T>::create();
}

template <class T>
void MockFactory<T>::inject(const QSharedPointer<T> &instance)
{
    *mockfactory::injected<T>().lock() = instance;
}
