#pragma once

#include <string_view>

/// Each part of a key is a table in a table. toml++ counts them only in braces and brackets, of
/// which it reads 256 within each other; with this many parts at each the deepest table takes 1 MiB
/// of stack.
inline constexpr int maxKeyParts = 16;

/// The line, from 1, of the first key with more than `maxKeyParts` parts; 0 if there is none. What
/// is no TOML may have any.
int lineOfDeepKey(std::string_view toml);
