#pragma once
// Numbers as the program writes and reads them in settings, price files and log lines.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace halvard::platform {

// The shortest general form: 15 significant digits, no trailing zeros, an exponent only outside
// 1e-4 .. 1e15 (28.69 + 0.125 gives "28.815", 3 gives "3", 1e20 gives "1E+20").
std::string FormatGeneral(double value);

// A decimal number with optional sign, fraction and exponent; spaces around it are ignored.
// Nothing else may follow.
std::optional<double> ParseDouble(std::string_view text);

// A whole number; a fraction is rounded half to even (49650800.0 reads as 49650800, 2.5 as 2).
std::optional<int64_t> ParseWholeNumber(std::string_view text);

std::string_view TrimSpaces(std::string_view text);

}  // namespace halvard::platform
