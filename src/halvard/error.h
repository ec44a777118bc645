#pragma once
// The one exception type of the library. Its message says what went wrong and where (file,
// line, value, limit), so a front end can show it as it stands.

#include <stdexcept>
#include <string>

namespace halvard {

class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A command was given an argument it cannot use (an unknown setting name, a text that does not
// convert). Front ends treat it as a usage error rather than a failure of the run.
class UsageError : public Error {
 public:
  using Error::Error;
};

}  // namespace halvard
