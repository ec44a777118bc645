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

// The shortest general form when it reads back as the same double, otherwise the shortest text
// that does (0.1 + 0.2 gives "0.30000000000000004", the largest double "1.7976931348623157E+308").
// What the settings file stores, so that every stored number reads back exactly.
std::string FormatRoundTrip(double value);

// A decimal number with optional sign, fraction and exponent; spaces around it are ignored.
// Nothing else may follow.
std::optional<double> ParseDouble(std::string_view text);

// A whole number; a fraction is rounded half to even (49650800.0 reads as 49650800, 2.5 as 2).
std::optional<int64_t> ParseWholeNumber(std::string_view text);

}  // namespace halvard::platform
