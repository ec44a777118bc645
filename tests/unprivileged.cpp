#include "unprivileged.h"

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>

namespace halvard::test {
namespace {

constexpr uid_t kNobody = 65534;

std::string Outcome(const std::function<std::string()>& fn) {
  try {
    return fn();
  } catch (const std::exception& e) {
    return std::string("exception: ") + e.what();
  }
}

void WriteAll(int fd, const std::string& text) {
  for (size_t done = 0; done < text.size();) {
    const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
    if (n <= 0) return;
    done += static_cast<size_t>(n);
  }
}

}  // namespace

std::string AsUnprivilegedUser(const std::function<std::string()>& fn) {
  if (::geteuid() != 0) return Outcome(fn);
  int pipeFds[2];
  if (::pipe(pipeFds) != 0) return "exception: no pipe to the unprivileged child";
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(pipeFds[0]);
    // Groups first: once the user is nobody, the groups can no longer be changed.
    const bool dropped =
        ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
    WriteAll(pipeFds[1],
             dropped && ::geteuid() == kNobody ? Outcome(fn) : "exception: root was not given up");
    ::_exit(0);  // no exit handlers of the test program in the child
  }
  ::close(pipeFds[1]);
  std::string text;
  char buffer[4096];
  for (ssize_t n; (n = ::read(pipeFds[0], buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<size_t>(n));
  }
  ::close(pipeFds[0]);
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
      WEXITSTATUS(status) != 0) {
    return "exception: the unprivileged child did not finish";
  }
  return text;
}

}  // namespace halvard::test
