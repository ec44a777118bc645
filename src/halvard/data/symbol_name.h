#pragma once
// A symbol is a name, never a path: it becomes SYMBOL.txt in the stock files folder and a part
// of a request address, so one that could leave the folder or add a parameter is refused before
// any file or request.

#include <string>
#include <string_view>

namespace halvard::data {

// Why the text cannot be a symbol (empty, "." or "..", holding "/", "\" or a control
// character), or empty when it can.
std::string SymbolProblem(std::string_view symbol);

// Throws a halvard::Error naming the symbol when SymbolProblem finds one.
void RequireSymbolName(std::string_view symbol);

// The symbol as it goes into a request address: letters, digits and ".-_^" as they are, every
// other byte as %XX, so "^IXIC" stays and "A&B" is "A%26B".
std::string AddressPart(std::string_view symbol);

}  // namespace halvard::data
