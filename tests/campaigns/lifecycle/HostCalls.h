#pragma once

#include <stdexcept>
#include <string>
#include <vector>

/// What a function of the host throws in its place.
class HostFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A function of the host library that a loaded plug-in calls, by way of the dynamic linker. What
/// the plug-in calls through a table of virtual functions is none of them. A value type.
class HostCall
{
public:
    HostCall(std::string name, void **slot, void *function);

    /// As in C++, with the types of its arguments.
    const std::string &name() const { return m_name; }

    /// While it lives each call by the plug-in throws HostFailure, whatever the thread.
    class Throwing
    {
    public:
        explicit Throwing(const HostCall &call);
        ~Throwing();
        Throwing(const Throwing &) = delete;
        Throwing &operator=(const Throwing &) = delete;

        /// How many calls there were.
        int count() const;

    private:
        const HostCall &m_call;
    };

private:
    void lead(void *function) const;

    std::string m_name;
    void **m_slot;
    void *m_function;
};

/// Those of a plug-in that has been loaded and stays so; destructors, which must not throw, are
/// left out. Throws std::runtime_error if the library cannot be read.
std::vector<HostCall> hostCallsOf(const char *pluginFile);
