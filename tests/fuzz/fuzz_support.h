#pragma once
// What the fuzz harnesses share. Each harness hands the input to one parser the way the program
// does; a halvard::Error is the parser's documented refusal and ends the input quietly, anything
// else that escapes (another exception, a crash, a sanitizer report) is a finding.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "halvard/platform/http_client.h"

namespace halvard::fuzz {

inline std::string_view Text(const uint8_t* data, size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// A file of the given name holding the text, in a scratch folder of this process (made once,
// emptied of nothing: each input overwrites the file).
std::filesystem::path ScratchFile(std::string_view name, std::string_view text);
std::filesystem::path ScratchFolder();

// Every request answers 200 with the same body, as a service that says anything at all.
class FixedAnswer : public platform::HttpClient {
 public:
  explicit FixedAnswer(std::string body) : body_(std::move(body)) {}
  platform::HttpResponse Get(const std::string&) override {
    platform::HttpResponse r;
    r.status = 200;
    r.body = body_;
    return r;
  }

 private:
  std::string body_;
};

// Runs fn, letting only a halvard::Error end it quietly; false when one did.
template <class Fn>
bool Refusable(Fn&& fn);

}  // namespace halvard::fuzz

#include "halvard/error.h"

template <class Fn>
bool halvard::fuzz::Refusable(Fn&& fn) {
  try {
    fn();
    return true;
  } catch (const Error&) {
    return false;
  }
}
