// The paging through a screener service's answers, served locally.

#include "halvard/screener/service_screen.h"

#include <gtest/gtest.h>

#include "halvard/error.h"
#include "local_server.h"

namespace halvard::screener {
namespace {

using test::Reply;

struct PagingTest : ::testing::Test {
  ScreenResult Screen(int maxPages = kMaxScreenPages) {
    ScreenCriteria c;
    c.price.min = 5;
    return ScreenWithService(http, server.base(), c, progress, maxPages);
  }
  std::vector<std::string> Pages() const {
    std::vector<std::string> pages;
    for (const std::string& t : server.targets()) pages.push_back(t.substr(t.rfind('=') + 1));
    return pages;
  }

  test::LocalServer server;
  platform::CurlHttpClient http;
  platform::NoProgress progress;
};

TEST_F(PagingTest, PagesAreFetchedUntilOneBringsNoNewSymbol) {
  server.Answer("/screen", {Reply(200, "Symbol,Name\nAAA,a\nBBB,b\n"),
                            Reply(200, "Symbol,Name\nBBB,b\nCCC,c\n"),
                            Reply(200, "Symbol,Name\nCCC,c\nAAA,a\n")});
  const ScreenResult r = Screen();
  EXPECT_EQ(r.symbols, (std::vector<std::string>{"AAA", "BBB", "CCC"}));
  EXPECT_EQ(r.pages, 3);
  EXPECT_FALSE(r.pageCapReached);
  EXPECT_EQ(Pages(), (std::vector<std::string>{"1", "2", "3"}));
  EXPECT_EQ(server.targets().front(), "/screen?price=5..&page=1");

  server.Answer("/screen", {Reply(200, "Symbol\nAAA\n"), Reply(200, "Symbol\n")});
  EXPECT_EQ(Screen().pages, 2) << "the header alone ends the result";
}

TEST_F(PagingTest, ThePageCapStopsAServiceThatNeverEnds) {
  server.Answer("/screen", {Reply(200, "Symbol\nAAA\n"), Reply(200, "Symbol\nBBB\n"),
                            Reply(200, "Symbol\nCCC\n")});
  const ScreenResult r = Screen(2);
  EXPECT_EQ(r.symbols, (std::vector<std::string>{"AAA", "BBB"}));
  EXPECT_TRUE(r.pageCapReached);
  EXPECT_EQ(Pages(), (std::vector<std::string>{"1", "2"}));
}

TEST_F(PagingTest, AFailingPageIsAnErrorNamingThePageAndWhy) {
  struct Case {
    std::vector<Reply> replies;
    std::string page, why;
  };
  const std::vector<Case> cases = {
      {{Reply(200, "Symbol\nAAA\n"), Reply(500, "Symbol\nBBB\n")}, "page 2 ", "HTTP status 500"},
      {{Reply(200, "<html>busy</html>", "text/html")}, "page 1 ", "<html>busy</html>"},
      {{Reply(200, "Symbol\nAAA\n"), Reply(200, "")}, "page 2 ", "wrong shape"},
  };
  for (const Case& c : cases) {
    server.Answer("/screen", c.replies);
    try {
      Screen();
      ADD_FAILURE() << "no error for " << c.why;
    } catch (const Error& e) {
      EXPECT_NE(std::string(e.what()).find("screener " + c.page), std::string::npos) << e.what();
      EXPECT_NE(std::string(e.what()).find(c.why), std::string::npos) << e.what();
    }
  }
  try {
    ScreenWithService(http, test::RefusingAddress(), {}, progress);
    ADD_FAILURE() << "no error without an answer";
  } catch (const Error& e) {
    EXPECT_NE(std::string(e.what()).find("screener page 1 "), std::string::npos) << e.what();
    EXPECT_NE(std::string(e.what()).find("no answer"), std::string::npos) << e.what();
  }
}

}  // namespace
}  // namespace halvard::screener
