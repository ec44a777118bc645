#pragma once
// Checks of what a user may not do (write into a read-only folder, open a read-only file for
// writing) mean nothing as root, who may do all of it; the tests run as root in containers and
// in CI. This runs such a check as a user without privileges instead.

#include <functional>
#include <string>

namespace halvard::test {

// Runs fn and returns what it returns. As root, fn runs in a child process that first gives up
// root for good (user and group 65534, "nobody", no supplementary groups), so the folders and
// files fn reaches must be open to others; a halvard::Error or other exception escaping fn is
// returned as "exception: " and its message. As any other user fn simply runs.
std::string AsUnprivilegedUser(const std::function<std::string()>& fn);

}  // namespace halvard::test
