#include "local_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

#include "test_support.h"

namespace halvard::test {

LocalServer::LocalServer() {
  server_.Get(".*", [this](const httplib::Request& request, httplib::Response& response) {
    std::unique_lock lock(mutex_);
    targets_.push_back(request.target);
    headers_.push_back(request.headers);
    released_.wait(lock, [this] { return !held_; });
    auto it = replies_.find(request.path);
    if (it == replies_.end() || it->second.empty()) {
      response.status = 404;
      response.set_content("Not Found", "text/plain");
      return;
    }
    const Reply reply = it->second.front();
    if (it->second.size() > 1) it->second.erase(it->second.begin());
    response.status = reply.status;
    for (const auto& [name, value] : reply.headers) response.set_header(name, value);
    response.set_content(reply.body, reply.contentType);
  });
  port_ = server_.bind_to_any_port("127.0.0.1");
  if (port_ <= 0) throw std::runtime_error("no local port for the test server");
  thread_ = std::thread([this] { server_.listen_after_bind(); });
  // stop() does nothing to a server that is not running yet, so a quick test would hang.
  while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

LocalServer::~LocalServer() {
  Release();
  server_.stop();
  thread_.join();
}

void LocalServer::Answer(const std::string& path, std::vector<Reply> replies) {
  std::lock_guard lock(mutex_);
  replies_[path] = std::move(replies);
}

void LocalServer::Hold() {
  std::lock_guard lock(mutex_);
  held_ = true;
}

void LocalServer::Release() {
  {
    std::lock_guard lock(mutex_);
    held_ = false;
  }
  released_.notify_all();
}

std::vector<std::string> LocalServer::targets() const {
  std::lock_guard lock(mutex_);
  return targets_;
}

std::vector<std::string> LocalServer::headers(const std::string& name) const {
  std::lock_guard lock(mutex_);
  std::vector<std::string> values;
  for (const httplib::Headers& h : headers_) {
    const auto it = h.find(name);
    values.push_back(it == h.end() ? "" : it->second);
  }
  return values;
}

namespace {

// A TCP socket on 127.0.0.1 at a port the system picks; listening when asked.
int BoundSocket(bool listening, int& port) {
  const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (fd < 0 || ::bind(fd, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
      (listening && ::listen(fd, 4) != 0) ||
      ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw std::runtime_error("no local socket for the test");
  }
  port = ntohs(address.sin_port);
  return fd;
}

}  // namespace

std::string RefusingAddress() {
  int port = 0;
  ::close(BoundSocket(false, port));  // the port was free a moment ago and nothing listens
  return "http://127.0.0.1:" + std::to_string(port);
}

SilentServer::SilentServer() : fd_(BoundSocket(true, port_)) {}

SilentServer::~SilentServer() {
  ::close(fd_);
}

std::string GenuineAnswer(const std::string& name) {
  return ReadText(TestData() / "responses" / name);
}

settings::ServiceSettings ServicesAt(const std::string& base, const std::string& provider) {
  settings::ServiceSettings s;
  s.provider = provider;
  s.tableHost = s.chartHost = s.stooqHost = s.tiingoHost = base;
  s.quotesHost = s.profileHost = s.screenerHost = s.edgarHost = s.edgarDataHost = base;
  s.cookieHost = "";
  s.pauseMilliseconds = 0;
  s.retries = 0;
  return s;
}

}  // namespace halvard::test
