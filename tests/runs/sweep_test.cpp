#include "halvard/runs/sweep.h"

#include <gtest/gtest.h>

#include "halvard/error.h"
#include "test_support.h"

namespace halvard::runs {
namespace {

std::vector<double> StopLosses(std::string_view answer) {
  SweepLevels levels;
  ParseStopLossLevels(answer, levels);
  return StopLossLevels(levels);
}

std::vector<int> RsDays(std::string_view answer) {
  SweepLevels levels;
  ParseRsLevels(answer, levels);
  return RsLevels(levels);
}

TEST(Sweep, LevelsRunLikeACountingLoopInBinaryArithmetic) {
  EXPECT_EQ(StopLosses("1,2,0.5"), (std::vector<double>{1, 1.5, 2}));
  EXPECT_EQ(StopLosses("0.1,0.3,0.1").size(), 2u);  // 0.1 + 0.1 + 0.1 is above 0.3
  EXPECT_EQ(StopLosses("2,1,-0.5"), (std::vector<double>{2, 1.5, 1}));
  EXPECT_EQ(StopLosses("1,2,-1"), std::vector<double>{});  // runs no pass, as the loop would
  EXPECT_EQ(StopLosses(" 1 , 1 , 1 ,junk"), std::vector<double>{1});  // three parts count
  EXPECT_EQ(RsDays("5,10,2"), (std::vector<int>{5, 7, 9}));
  EXPECT_EQ(RsDays("4.5,9.5,2.5"), (std::vector<int>{4, 6, 8, 10}));  // halves round to even
}

TEST(Sweep, TheCurrentSettingsGiveOnePass) {
  settings::Config config;
  config.stopLossLimit = 0.375;
  config.rsDayCurr = 7;
  const SweepLevels levels = DefaultLevels(config);
  EXPECT_EQ(StopLossLevels(levels), std::vector<double>{0.375});
  EXPECT_EQ(RsLevels(levels), std::vector<int>{7});
}

TEST(Sweep, BadAnswersAndEndlessStepsAreRefusedAndLeaveTheLevels) {
  for (const char* answer : {"1,2", "1,x,0.5", "", "1,2,0", "1,2,1e-300", "0,1e9,0.001"}) {
    SweepLevels levels;
    EXPECT_THROW(ParseStopLossLevels(answer, levels), UsageError) << answer;
    EXPECT_EQ(levels.stopLossStep, 1) << answer;
  }
  SweepLevels levels;
  EXPECT_THROW(ParseRsLevels("5,10,0.4", levels), UsageError);  // a step that rounds to 0
  EXPECT_THROW(ParseRsLevels("5,40000,1", levels), UsageError);
  EXPECT_EQ(
      test::ErrorText([&] { ParseStopLossLevels("1,two,0.5", levels); }),
      "stop-loss levels \"1,two,0.5\": expected start,stop,step, and \"two\" is not a number");
}

}  // namespace
}  // namespace halvard::runs
