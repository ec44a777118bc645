#pragma once
// Amounts as the trade log, the result rows and the batch summary print them. Both round half
// away from zero on the value's 15-significant-digit decimal form (0.125 gives 0.13, 28.69 +
// 0.125 gives 28.82) and group thousands with ",".

#include <string>

namespace halvard::platform {

// Two decimals, negatives in parentheses: 1234.5 gives "1,234.50", -0.5 gives "(0.50)"; a
// negative amount that rounds to zero still prints "(0.00)".
std::string FormatMoney(double value);

// Fixed decimals with a leading "-" for negatives: FormatFixed(-1234.5, 2) gives "-1,234.50".
std::string FormatFixed(double value, int decimals);

}  // namespace halvard::platform
