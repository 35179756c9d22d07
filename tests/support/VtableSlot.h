#pragma once

#include <QObject>

#include <bit>
#include <cstddef>
#include <type_traits>

namespace support {

/// The place in its class's virtual table that a virtual member function is called through, counted
/// from 0; -1 if the function is not virtual. Programs that were built against a class call its
/// virtual functions by this number, so it may not change.
///
/// Relies on the Itanium C++ ABI as x86-64 has it: the representation of a pointer to a virtual
/// member function is 1 + the byte offset in the table.
template <class Function>
std::ptrdiff_t vtableSlot(Function function)
{
    struct Representation
    {
        std::ptrdiff_t pointer;
        std::ptrdiff_t adjustment;
    };
    static_assert(std::is_member_function_pointer_v<Function>);

    const auto representation = std::bit_cast<Representation>(function);
    if (representation.pointer % 2 == 0)
        return -1;
    return (representation.pointer - 1) / static_cast<std::ptrdiff_t>(sizeof(void *));
}

/// The first slot that a subclass of QObject can use for itself.
inline std::ptrdiff_t firstSlotAfterQObject()
{
    struct LastOfQObject : QObject
    {
        using QObject::disconnectNotify;
    };
    return vtableSlot(&LastOfQObject::disconnectNotify) + 1;
}

} // namespace support
