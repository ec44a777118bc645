#include "terminal_progress.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace halvard::cli {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnInterrupt(int) {
  interrupted = 1;
}

constexpr int kBarWidth = 30;
constexpr auto kRedrawEvery = std::chrono::milliseconds(50);

}  // namespace

TerminalProgress::TerminalProgress() : terminal_(isatty(STDERR_FILENO) == 1) {
  interrupted = 0;
  struct sigaction action {};
  action.sa_handler = OnInterrupt;
  action.sa_flags = SA_RESETHAND;  // the second Ctrl-C is not caught
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
}

TerminalProgress::~TerminalProgress() {
  ClearLine();
  std::signal(SIGINT, SIG_DFL);
}

void TerminalProgress::Step(int done, int total, std::string_view text) {
  if (!terminal_) return;
  const auto now = std::chrono::steady_clock::now();
  if (drawn_ && now - lastDraw_ < kRedrawEvery && done < total) return;
  lastDraw_ = now;
  const int filled =
      total > 0 ? static_cast<int>(static_cast<long long>(kBarWidth) * done / total) : kBarWidth;
  std::string line = "\r";
  line.append(text).append(" [").append(filled, '#').append(kBarWidth - filled, ' ') += "]\x1b[K";
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  drawn_ = true;
}

bool TerminalProgress::Cancelled() const {
  return InterruptRequested();
}

bool TerminalProgress::InterruptRequested() {
  return interrupted != 0;
}

void TerminalProgress::ClearLine() {
  if (!drawn_) return;
  std::fputs("\r\x1b[K", stderr);
  std::fflush(stderr);
  drawn_ = false;
}

}  // namespace halvard::cli
