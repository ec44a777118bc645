#include "halvard/runs/session.h"

#include <type_traits>

#include "runs_fixture.h"

namespace halvard::runs {
namespace {

// The engine refers to the session's view, settings and panes: a moved or copied session would
// leave it pointing at the old ones.
static_assert(!std::is_copy_constructible_v<Session> && !std::is_move_constructible_v<Session>);
static_assert(!std::is_copy_assignable_v<Session> && !std::is_move_assignable_v<Session>);
static_assert(!std::is_copy_constructible_v<engine::BackTester> &&
              !std::is_move_constructible_v<engine::BackTester>);
static_assert(!std::is_copy_assignable_v<engine::BackTester> &&
              !std::is_move_assignable_v<engine::BackTester>);

class BacktestShownTest : public RunsTest {
 protected:
  // The shown symbol's backtest log on its own.
  std::string Backtest(bool signalMode) {
    s.log().Clear();
    s.BacktestShown(signalMode);
    return s.log().text();
  }
};

TEST_F(BacktestShownTest, TheMKeyTradesTheShownSymbolUnderItsBuyModeHeader) {
  Prices("TWO", test::TwoBoxes());
  List({"TWO"});
  const std::string log = Backtest(false);
  EXPECT_EQ(log.rfind("Buy Mode = BoxTops\r\nBacktesting - TWO\r\nTrying with Corvanes\r\n", 0), 0u)
      << log;
  EXPECT_NE(log.find("Bought "), std::string::npos) << log;
}

TEST_F(BacktestShownTest, TheGKeyStopsAtTheSignalInsteadOfBuying) {
  Prices("TWO", test::TwoBoxes());
  List({"TWO"});
  const std::string log = Backtest(true);
  EXPECT_EQ(log.rfind("Buy Mode = BoxTops\r\n", 0), 0u) << log;
  EXPECT_EQ(log.find("Bought "), std::string::npos) << log;
  EXPECT_TRUE(s.tester().buyArmed || s.tester().stopLossHit);
}

TEST_F(BacktestShownTest, TheRsCheckFollowsTheSetting) {
  Prices("TWO", test::TwoBoxes());
  List({"TWO"});
  s.config.rsCheckEnabled = false;
  const std::string unchecked = Backtest(false);
  s.config.rsCheckEnabled = true;
  EXPECT_EQ(Backtest(false), unchecked);  // no index loaded: the check lets every buy through
}

// The RS line needs the index: a start without it turns the line off, one with it leaves it on.
TEST_F(RunsTest, AStartWithoutTheIndexFileTurnsTheRSLineOff) {
  EXPECT_FALSE(s.StartUp());
  EXPECT_FALSE(s.config.showRS);
  EXPECT_FALSE(s.view().rsAvailable);

  test::WriteText(dir / "^IXIC.txt",
                  "Date,Open,High,Low,Close,Volume\n2017-12-29,1,1,1,6903.39,1\n");
  EXPECT_TRUE(s.StartUp());
  EXPECT_TRUE(s.config.showRS);
  EXPECT_TRUE(s.view().rsAvailable);
  EXPECT_EQ(s.view().indexClose[0], 6903.39);
}

}  // namespace
}  // namespace halvard::runs
