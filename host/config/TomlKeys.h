#pragma once

#include <string_view>

/// Each part of a key is a table in a table, and reading them takes stack for each. toml++ counts
/// only those within brackets and braces, of which it reads 256 within each other.
inline constexpr int maxKeyParts = 64;

/// The line, from 1, of the first key with more than `maxKeyParts` parts, those of the braces
/// around it included; 0 if there is none. What is no TOML may have any.
int lineOfDeepKey(std::string_view toml);
