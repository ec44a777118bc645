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

TEST(HttpClient, OnlyTheWebIsAskedAndRedirectsAreBounded) {
  test::LocalServer server;
  server.Answer("/to-file", {{302, "", "text/plain", {{"Location", "file:///etc/hostname"}}}});
  server.Answer("/loop", {{302, "", "text/plain", {{"Location", "/loop"}}}});
  CurlHttpClient client;
  for (const std::string& url : {server.base() + "/to-file", std::string("file:///etc/hostname"),
                                 std::string("ftp://127.0.0.1:1/x"), server.base() + "/loop"}) {
    const HttpResponse r = client.Get(url);
    EXPECT_FALSE(r.answered()) << url;
    EXPECT_TRUE(r.body.empty()) << url;
  }
  EXPECT_EQ(server.targets().size(), 1u + 11u);  // the first request and ten redirects
}

TEST(HttpClient, AnAnswerOverTheLimitIsRefused) {
  test::LocalServer server;
  server.Answer("/big", {{200, std::string(3 << 20, 'x')}});
  HttpOptions options;
  options.maxBodyBytes = size_t{2} << 20;
  const HttpResponse r = CurlHttpClient(options).Get(server.base() + "/big");
  EXPECT_FALSE(r.answered());
  EXPECT_EQ(r.failure, "the answer is larger than the limit of 2 MB");
  EXPECT_TRUE(r.body.empty());
  options.maxBodyBytes = size_t{3} << 20;
  EXPECT_EQ(CurlHttpClient(options).Get(server.base() + "/big").body.size(), size_t{3} << 20);
}

TEST(HttpClient, ARequestStopsWhenTheUserAsks) {
  test::SilentServer silent;  // would keep the request waiting for the whole minute
  HttpOptions options;
  int asked = 0;
  options.cancelled = [&] { return ++asked > 2; };
  const HttpResponse r = CurlHttpClient(options).Get(silent.base() + "/table.csv");
  EXPECT_TRUE(r.cancelled);
  EXPECT_FALSE(r.answered());
  EXPECT_FALSE(PacedHttpClient::Retryable(r));
}

// A client whose waits are recorded instead of slept, with no jitter.
struct Retrying {
  explicit Retrying(RetryPolicy policy)
      : client(
            std::make_unique<CurlHttpClient>(HttpOptions{milliseconds(300)}), milliseconds(0),
            policy, {{}, [this](const std::string& r) { retries.push_back(r); }},
            [this](milliseconds d) {
              waits.push_back(d);
              return true;
            },
            [] { return 1.0; }) {}
  std::vector<milliseconds> waits;
  std::vector<std::string> retries;
  PacedHttpClient client;
};

TEST(PacedHttpClient, RetriesABusyServiceWithGrowingWaitsOrWhatItAsks) {
  test::LocalServer server;
  const Reply unavailable{503, ""};
  const Reply limited{429, "slow down", "text/plain", {{"Retry-After", "3"}}};
  server.Answer("/q", {unavailable, unavailable, limited, {200, "fine"}});
  Retrying r({3, milliseconds(1000), milliseconds(30000), milliseconds(60000)});
  EXPECT_EQ(r.client.Get(server.base() + "/q?s=X&token=KEY").body, "fine");
  EXPECT_EQ(r.waits, (std::vector<milliseconds>{milliseconds(1000), milliseconds(2000),
                                                milliseconds(3000)}));
  ASSERT_EQ(r.retries.size(), 3u);
  EXPECT_EQ(r.retries[0], "Retrying " + server.base() +
                              "/q in 1 s (1 of 3) after HTTP status 503 (Service Unavailable)");
  EXPECT_EQ(r.retries[2].find("KEY"), std::string::npos);
}

TEST(PacedHttpClient, RetriesAreBoundedInNumberAndInTotalWait) {
  test::LocalServer server;
  server.Answer("/always", {{503, ""}});
  server.Answer("/gone", {{404, "no such thing"}});
  Retrying few({2, milliseconds(1000), milliseconds(30000), milliseconds(60000)});
  EXPECT_EQ(few.client.Get(server.base() + "/always").status, 503);
  EXPECT_EQ(few.waits.size(), 2u);
  Retrying shortTotal({5, milliseconds(1000), milliseconds(30000), milliseconds(3500)});
  EXPECT_EQ(shortTotal.client.Get(server.base() + "/always").status, 503);
  EXPECT_EQ(shortTotal.waits, (std::vector<milliseconds>{milliseconds(1000), milliseconds(2000)}));
  Retrying notFound({3, milliseconds(1000), milliseconds(30000), milliseconds(60000)});
  EXPECT_EQ(notFound.client.Get(server.base() + "/gone").status, 404);  // no retry
  EXPECT_EQ(server.targets().size(), 3u + 3u + 1u);

  // No answer: a time-out is tried again, a refused connection is not.
  test::SilentServer silent;
  Retrying timedOut({1, milliseconds(1000), milliseconds(30000), milliseconds(60000)});
  EXPECT_FALSE(timedOut.client.Get(silent.base() + "/q").answered());
  EXPECT_EQ(timedOut.waits.size(), 1u);
  Retrying refused({1, milliseconds(1000), milliseconds(30000), milliseconds(60000)});
  EXPECT_FALSE(refused.client.Get(test::RefusingAddress() + "/q").answered());
  EXPECT_TRUE(refused.waits.empty());
}

TEST(PacedHttpClient, RetryWaitIsBounded) {
  const RetryPolicy policy{3, milliseconds(2000), milliseconds(30000), milliseconds(60000)};
  const auto wait = [&](std::optional<long> asked, int n, double jitter) {
    HttpResponse r;
    r.status = 503;
    r.retryAfterSeconds = asked;
    return PacedHttpClient::RetryWait(r, n, policy, jitter).count();
  };
  EXPECT_EQ(wait(std::nullopt, 1, 1.0), 2000);
  EXPECT_EQ(wait(std::nullopt, 3, 0.5), 4000);
  EXPECT_EQ(wait(std::nullopt, 9, 1.0), 30000);
  EXPECT_EQ(wait(12, 1, 0.5), 12000);  // what the service asks, without jitter
  EXPECT_EQ(wait(3600, 1, 1.0), 30000);
  EXPECT_EQ(wait(-4, 1, 1.0), 0);  // an HTTP date already past
}

TEST(PacedHttpClient, AWaitEndsWhenTheUserAsks) {
  bool stop = false;
  const PacedHttpClient::Sleep sleep = InterruptibleSleep([&] { return stop; });
  EXPECT_TRUE(sleep(milliseconds(1)));
  stop = true;
  EXPECT_FALSE(sleep(std::chrono::hours(1)));

  test::LocalServer server;
  server.Answer("/q", {{503, ""}});
  int asked = 0;
  PacedHttpClient client(
      std::make_unique<CurlHttpClient>(), milliseconds(0),
      {3, std::chrono::minutes(1), std::chrono::minutes(5), std::chrono::hours(1)},
      {[&] { return ++asked > 1; }, {}});
  const HttpResponse r = client.Get(server.base() + "/q");
  EXPECT_TRUE(r.cancelled);
  EXPECT_EQ(server.targets().size(), 1u);
}

}  // namespace
}  // namespace halvard::platform
