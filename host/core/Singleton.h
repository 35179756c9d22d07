#pragma once

#include <memory>

/**
 * The one instance of T in the process, shared by every library that asks for it.
 *
 * Owner: the class itself; an instance that was handed out is never destroyed at exit, so
 * destructors of static objects may still use it.
 * Thread: `instance` is thread-safe, also on first use. `replace` is not: nobody may be using the
 * old instance.
 * Errors: what T's constructor throws leaves nothing behind; the next call tries again.
 *
 * Only declared here. The definitions are in SingletonDefinition.h, and exactly one library
 * instantiates them for each T: a template's static that every library instantiated for itself
 * would exist once in each of them.
 */
template <class T>
class Singleton
{
public:
    Singleton() = delete;

    /// The instance, created with `T()` on first use if the host has not set one.
    static T &instance();

    /// Makes `object` the instance and returns the one before it, or null. A null `object` makes
    /// the next `instance` create a new one.
    static std::unique_ptr<T> replace(std::unique_ptr<T> object);
};
