#pragma once

namespace support {

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SUPPORT_ADDRESS_SANITIZER // as Clang tells it
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(SUPPORT_ADDRESS_SANITIZER)
/// Whether what was freed can be seen to be free: AddressSanitizer keeps it, and takes its time.
inline constexpr bool memoryIsOurs = false;
#else
inline constexpr bool memoryIsOurs = true;
#endif

} // namespace support
