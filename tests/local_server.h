#pragma once
// An HTTP server on 127.0.0.1 for the download tests, on a port the system picks. Each path
// answers with its replies in turn (the last one repeats); every request's target is recorded.
// Nothing here ever reaches beyond this machine.

#include <httplib.h>

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "halvard/settings/services.h"

namespace halvard::test {

struct Reply {
  using Headers = std::vector<std::pair<std::string, std::string>>;
  Reply() = default;
  Reply(int status, std::string body, std::string contentType = "text/csv", Headers headers = {})
      : status(status),
        body(std::move(body)),
        contentType(std::move(contentType)),
        headers(std::move(headers)) {}

  int status = 200;
  std::string body;
  std::string contentType = "text/csv";
  Headers headers;
};

class LocalServer {
 public:
  LocalServer();
  ~LocalServer();
  LocalServer(const LocalServer&) = delete;
  LocalServer& operator=(const LocalServer&) = delete;

  void Answer(const std::string& path, std::vector<Reply> replies);
  // While held, every request waits (its target already recorded) until Release: a slow
  // answer, for as long as a test needs.
  void Hold();
  void Release();
  std::string base() const { return "http://127.0.0.1:" + std::to_string(port_); }
  // The request targets (path and query) in the order they came.
  std::vector<std::string> targets() const;
  // The value of one header in each request, in the order they came ("" when it had none).
  std::vector<std::string> headers(const std::string& name) const;

 private:
  httplib::Server server_;
  int port_ = 0;
  std::thread thread_;
  mutable std::mutex mutex_;
  std::condition_variable released_;
  bool held_ = false;
  std::map<std::string, std::vector<Reply>> replies_;
  std::vector<std::string> targets_;
  std::vector<httplib::Headers> headers_;
};

// An address where nothing listens (connections are refused).
std::string RefusingAddress();

// A socket that takes connections but never answers; closed at the end.
class SilentServer {
 public:
  SilentServer();
  ~SilentServer();
  SilentServer(const SilentServer&) = delete;
  SilentServer& operator=(const SilentServer&) = delete;
  std::string base() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  int port_ = 0;  // before fd_: set while fd_ is made
  int fd_ = -1;
};

// The genuine answers of the historical-quotes service kept under tests/data/responses.
std::string GenuineAnswer(const std::string& name);

// Service settings with every service at base (a local server) and the chart service's cookie
// page nowhere, so nothing reaches beyond this machine; no pause between requests, no retry.
settings::ServiceSettings ServicesAt(const std::string& base,
                                     const std::string& provider = "chart");

}  // namespace halvard::test
