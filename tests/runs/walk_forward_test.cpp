// Walk-forward folds worked out by hand on a series whose best stop loss changes from one span
// to the next; a history too short for its spans; one fold; the settings left as they were.

#include "halvard/runs/walk_forward.h"

#include "halvard/error.h"
#include "runs_fixture.h"

namespace halvard::runs {
namespace {

test::Day Mid(double high, double low) {
  return {(high + low) / 2, high, low, (high + low) / 2};
}

void Repeat(std::vector<test::Day>& days, int count, const test::Day& day) {
  days.insert(days.end(), static_cast<size_t>(count), day);
}

// 139 days (p0 oldest ... p138 newest), no unusual-volume search, corvanes not traded:
//   p0-p51 flat at 10-10.5, no box.
//   Trade X (p52-p73): box k (top 12, bottom 10), box m (top 13, bottom 11), a breakout on p63
//     buys 380 at 13.125 (4,987.50). p64 dips to 10: a stop loss of 0.5 (10.5) sells there at
//     10.5, -997.50; one of 2 (9) holds. The rise makes box n (top 18 on p68, bottom 17), which
//     raises the stop to 17 - 2 = 15; p73 falls to 14 from an open of 17.5 and sells at 15:
//     +712.50.
//   p74-p95 flat at 17-17.5.
//   Trade Y (p96-p115): box k (top 20, bottom 18), box m (top 21, bottom 19), a breakout on p107
//     buys 236 at 21.125 (4,985.50); box n (top 24, bottom 23) raises the stop to 22.5 (0.5) or
//     21 (2); p115 falls to 20 from an open of 23.5: sold at 22.5, +324.50, or at 21, -29.50.
//   p116-p138 flat at 20.5-21.
// So the stop loss of 2 is best on X's days and 0.5 on Y's.
std::vector<test::Day> TwoTradesApart() {
  std::vector<test::Day> days;
  Repeat(days, 52, Mid(10.5, 10));
  for (const test::Day& d : {Mid(12, 10.5),
                             Mid(11.5, 10),
                             Mid(11.5, 10.5),
                             Mid(11.5, 10.5),
                             Mid(11.5, 10.5),
                             Mid(12.5, 11),
                             Mid(13, 11.5),
                             Mid(12.5, 11),
                             Mid(12.5, 11.5),
                             Mid(12.5, 11.5),
                             Mid(12.5, 11.5),
                             Mid(14, 12.5),
                             test::Day{11, 11.5, 10, 11},
                             Mid(15, 14),
                             Mid(16, 15),
                             Mid(17, 16),
                             Mid(18, 17.5),
                             Mid(17.8, 17),
                             Mid(17.8, 17.2),
                             Mid(17.8, 17.2),
                             Mid(17.8, 17.2),
                             test::Day{17.5, 17.5, 14, 17.25}}) {
    days.push_back(d);
  }
  Repeat(days, 22, Mid(17.5, 17));
  for (const test::Day& d :
       {Mid(20, 18.5),   Mid(19.5, 18),   Mid(19.5, 18.5), Mid(19.5, 18.5),
        Mid(19.5, 18.5), Mid(20.5, 19),   Mid(21, 19.5),   Mid(20.5, 19),
        Mid(20.5, 19.5), Mid(20.5, 19.5), Mid(20.5, 19.5), Mid(22, 20.5),
        Mid(22.5, 21.5), Mid(23, 22),     Mid(24, 23.5),   Mid(23.8, 23),
        Mid(23.8, 23.2), Mid(23.8, 23.2), Mid(23.8, 23.2), test::Day{23.5, 23.5, 20, 20.5}}) {
    days.push_back(d);
  }
  Repeat(days, 23, Mid(21, 20.5));
  return days;
}

// The report from the fold table on.
std::string Folds(const std::string& report) {
  return report.substr(report.find(" Fold "));
}

class WalkForwardTest : public RunsTest {
 protected:
  WalkForwardTest() {
    s.config.stopLossLimit = 1.25;
    s.config.rsDayCurr = 7;
    Prices("XY", TwoTradesApart());
  }
  void Levels(WalkForwardReport& report) {
    ParseStopLossLevels("0.5,2,1.5", report.levels);  // 0.5 and 2
    ParseRsLevels("10,10,1", report.levels);
  }

  platform::NoProgress quiet;
  WalkForwardReport walk{s, quiet};
  const RunSwitches boxes{false, true, false};
};

TEST_F(WalkForwardTest, TwoFoldsPickTheLevelsOfTheDaysBeforeAndTradeThemOnTheNextSpan) {
  // 139 days in three spans: p0-p45, p46-p91, p92-p138 (the odd day in the newest).
  List({"XY"});
  Levels(walk);
  walk.WalkForward(boxes, 2);
  // Fold 1: nothing trades on the flat p0-p45, so no levels made money and the fold stays out.
  // Fold 2: on p0-p91 X alone trades, and 2 (+712.50) beats 0.5 (-997.50); on p92-p138 a stop
  // loss of 2 trades Y at -29.50 where 0.5 would have made 324.50.
  // The whole history with 0.5: X sells on the dip (-997.50); the next trade pairs X's box n
  // with Y's box k (bottom 18 against 17), buys 248 at 20.125 on p101 and 236 at 21.125 on
  // p107, and sells all 484 at 22.5 on p115 (10,890 for 9,976.50): +913.50, -84 in all. With
  // 2: +712.50 on X, then the same two buys sold at 21 (10,164): +187.50, 900 in all.
  EXPECT_EQ(Folds(walk.text()),
            " Fold \t Stop Loss \t RS Days \t In-Sample \t Out-of-Sample \r\n"
            "---------------------------------------------------\r\n"
            "1\tnone\tnone\t0.00\t0.00\tno levels made a profit before this span\r\n"
            "2\t2\t10\t712.50\t-29.50\r\n"
            "---------------------------------------------------\r\n"
            "Out-of-sample total = -29.50\r\n"
            "In-sample best over the whole history = 900.00 with a stoploss setting 2$ below "
            "box bottom and RS comparison at 10 days.\r\n"
            "===================================================\r\n");
  EXPECT_EQ(walk.text().substr(0, walk.text().find("Symbols")),
            "Walk Forward Testing three in 2 folds\r\n"
            "Stoploss settings starting from 0.5 to 2 with a step of 1.5\r\n"
            "RS settings starting from 10 to 10 with a step of 1\r\n"
            "---------------------------------------------------\r\n"
            "Buy Mode = BoxTops\r\n"
            "Each symbol's newest 139 days (all of a shorter file) in 3 equal spans, the days "
            "left over in the newest\r\n"
            "Fold f trades span f with the levels most profitable on spans 0 to f-1\r\n"
            "---------------------------------------------------\r\n");
}

TEST_F(WalkForwardTest, OneFoldValuesATradeOpenOnTheSpansLastDayAtItsClose) {
  // Two spans: p0-p68 and p69-p138. On p0-p68 a stop loss of 2 still holds X's 380 shares on
  // p68 (box n's top is no box yet: three newer days must confirm it), valued at its close
  // 17.75: 6,745 for 4,987.50, +1,757.50. On p69-p138 box n is not seen; p72 tops a box down to
  // p73's 14 that Y's first top breaks, so Y's box m is the pair's second and Y trades as alone.
  List({"XY"});
  Levels(walk);
  walk.WalkForward(boxes, 1);
  const std::string& text = walk.text();
  EXPECT_NE(text.find("1\t2\t10\t1,757.50\t-29.50\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("Out-of-sample total = -29.50\r\nIn-sample best over the whole history = "
                      "900.00 with a stoploss setting 2$"),
            std::string::npos)
      << text;
}

TEST_F(WalkForwardTest, TheWholeHistoryClaimIsTheBatchSweepsMaximum) {
  List({"XY"});
  Levels(walk);
  walk.GoCommand(boxes);
  walk.WalkForward(boxes, 2);
  // Both runs add to one report, as the window's text grows.
  EXPECT_NE(walk.text().find("Maximum profit = 900 with a stoploss setting 2$ below box bottom "
                             "and RS comparison at 10 days.\r\nWalk Forward Testing three"),
            std::string::npos)
      << walk.text();
}

TEST_F(WalkForwardTest, AShortHistoryIsSkippedAndNamedAndTheSettingsStayAsTheyWere) {
  std::vector<test::Day> flat;
  Repeat(flat, 68, Mid(10.5, 10));
  Prices("SHORT", flat, 0);
  List({"SHORT", "GONE", "XY"});
  Levels(walk);
  walk.WalkForward(boxes, 2);
  const std::string& text = walk.text();
  // 68 days in three spans of 22 are too short; 69 would do (spans of 23).
  EXPECT_NE(text.find("Fold f trades span f with the levels most profitable on spans 0 to f-1\r\n"
                      "---------------------------------------------------\r\n"
                      "SHORT\tSkipped: 68 days make spans of 22 days, fewer than 23\r\n"
                      "GONE\tError opening stock file \r\n"
                      "Symbols tested = 1\r\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("2\t2\t10\t712.50\t-29.50\r\n"), std::string::npos) << text;
  // The same, as values.
  const WalkForwardResult& r = *walk.walkForwardResult();
  EXPECT_EQ(r.missing, std::vector<std::string>{"GONE"});
  ASSERT_EQ(r.skipped.size(), 1u);
  EXPECT_EQ(r.skipped[0].symbol, "SHORT");
  EXPECT_EQ(r.skipped[0].days, 68);
  EXPECT_EQ(r.skipped[0].spanDays, 22);
  EXPECT_TRUE(r.finished);
  EXPECT_EQ(r.symbolsTested, 1);
  ASSERT_EQ(r.foldRows.size(), 2u);
  EXPECT_EQ(r.foldRows[1].fold, 2);
  EXPECT_EQ(r.foldRows[1].stopLoss, 2);
  EXPECT_EQ(r.foldRows[1].rsDays, 10);
  EXPECT_EQ(r.foldRows[1].inSample, 712.5);
  EXPECT_EQ(r.foldRows[1].outOfSample, -29.5);
  EXPECT_EQ(s.config.stopLossLimit, 1.25);
  EXPECT_EQ(s.config.rsDayCurr, 7);
  EXPECT_EQ(walk.tradedList(), "");
}

TEST_F(WalkForwardTest, FoldsOutsideOneToFortyTwoAreRefusedBeforeAnything) {
  List({"XY"});
  EXPECT_THROW(walk.WalkForward(boxes, 0), UsageError);
  EXPECT_THROW(walk.WalkForward(boxes, kMaxFolds + 1), UsageError);
  EXPECT_EQ(walk.text(), "");
}

}  // namespace
}  // namespace halvard::runs
