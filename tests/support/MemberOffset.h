#pragma once

#include <bit>
#include <cstddef>

namespace support {

/// Where in an object of `Class` a data member lies, in bytes. Relies on the Itanium C++ ABI, whose
/// pointer to a data member is just that.
template <class Member, class Class>
std::ptrdiff_t memberOffset(Member Class::*member)
{
    return std::bit_cast<std::ptrdiff_t>(member);
}

} // namespace support
