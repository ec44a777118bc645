#include "halvard/platform/http_client.h"

#include <gtest/gtest.h>

#include "halvard/platform/paced_http_client.h"
#include "local_server.h"

namespace halvard::platform {
namespace {

using std::chrono::milliseconds;
using test::Reply;

TEST(HttpClient, ReturnsStatusBodyAndRetryAfterAndFollowsRedirects) {
  test::LocalServer server;
  server.Answer("/ok", {{200, "Date,Open\n1,2\n"}});
  server.Answer("/moved", {{302, "", "text/plain", {{"Location", "/ok"}}}});
  server.Answer("/busy", {{429, "Too Many Requests", "text/plain", {{"Retry-After", "7"}}}});
  CurlHttpClient client;

  const HttpResponse ok = client.Get(server.base() + "/moved");
  EXPECT_TRUE(ok.answered());
  EXPECT_EQ(ok.status, 200);
  EXPECT_EQ(ok.body, "Date,Open\n1,2\n");
  EXPECT_FALSE(ok.retryAfterSeconds);

  const HttpResponse busy = client.Get(server.base() + "/busy");
  EXPECT_EQ(busy.status, 429);
  EXPECT_EQ(busy.retryAfterSeconds, 7);

  const HttpResponse missing = client.Get(server.base() + "/nothing");
  EXPECT_TRUE(missing.answered());  // an error status is still an answer
  EXPECT_EQ(missing.status, 404);
}

TEST(HttpClient, NoAnswerIsReportedNotThrown) {
  CurlHttpClient client(HttpOptions{milliseconds(300)});
  const HttpResponse refused = client.Get(test::RefusingAddress() + "/table.csv");
  EXPECT_FALSE(refused.answered());
  EXPECT_NE(refused.failure.find("onnect"), std::string::npos) << refused.failure;

  test::SilentServer silent;
  const HttpResponse timedOut = client.Get(silent.base() + "/table.csv");
  EXPECT_FALSE(timedOut.answered());
  EXPECT_NE(timedOut.failure.find("timed out"), std::string::npos) << timedOut.failure;
}

TEST(PacedHttpClient, WaitsWhatARateLimitAsksAndTriesOnceMore) {
  test::LocalServer server;
  const Reply busy{429, "slow down", "text/plain", {{"Retry-After", "2"}}};
  server.Answer("/q", {busy, {200, "fine"}});
  server.Answer("/always", {busy});
  std::vector<milliseconds> waits;
  const auto record = [&](milliseconds d) { waits.push_back(d); };

  PacedHttpClient retrying(std::make_unique<CurlHttpClient>(), milliseconds(0), true, record);
  EXPECT_EQ(retrying.Get(server.base() + "/q").body, "fine");
  EXPECT_EQ(waits, std::vector<milliseconds>{milliseconds(2000)});
  EXPECT_EQ(retrying.Get(server.base() + "/always").status, 429);  // once more, not for ever
  EXPECT_EQ(server.targets().size(), 4u);

  server.Answer("/q", {busy, {200, "fine"}});
  PacedHttpClient plain(std::make_unique<CurlHttpClient>(), milliseconds(0), false, record);
  EXPECT_EQ(plain.Get(server.base() + "/q").status, 429);
  EXPECT_EQ(server.targets().size(), 5u);
}

TEST(PacedHttpClient, RetryWaitIsBounded) {
  const auto wait = [](std::optional<long> asked) {
    HttpResponse r;
    r.status = 429;
    r.retryAfterSeconds = asked;
    return PacedHttpClient::RetryWait(r).count();
  };
  EXPECT_EQ(wait(std::nullopt), 5);
  EXPECT_EQ(wait(12), 12);
  EXPECT_EQ(wait(3600), 30);
  EXPECT_EQ(wait(-4), 0);  // an HTTP date already past
}

TEST(PacedHttpClient, PausesBetweenTwoRequests) {
  test::LocalServer server;
  server.Answer("/q", {{200, "x"}});
  std::vector<milliseconds> waits;
  PacedHttpClient paced(std::make_unique<CurlHttpClient>(), milliseconds(60000), false,
                        [&](milliseconds d) { waits.push_back(d); });
  paced.Get(server.base() + "/q");
  EXPECT_TRUE(waits.empty());  // nothing to wait for before the first
  paced.Get(server.base() + "/q");
  ASSERT_EQ(waits.size(), 1u);
  EXPECT_GT(waits[0], milliseconds(50000));
}

}  // namespace
}  // namespace halvard::platform
