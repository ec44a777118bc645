// The live report's JSON document: every documented field, and nothing else, with the values
// of the hand-written text report of the same sweep (numbers as numbers, ISO dates).

#include "halvard/runs/live_json.h"

#include <nlohmann/json.hpp>

#include "halvard/platform/date_text.h"
#include "json_schema.h"
#include "runs_fixture.h"

namespace halvard::runs {
namespace {

using nlohmann::json;

class LiveJsonTest : public RunsTest {
 protected:
  platform::NoProgress quiet;
  LiveReport report{s, quiet, *platform::ParseDate("11/23/2026")};
};

TEST_F(LiveJsonTest, TheDocumentHoldsTheHandWrittenReportsValuesInItsDocumentedFields) {
  Prices("TWO", test::TwoBoxes());
  Prices("FLAT", std::vector<test::Day>(kBars, test::Day{9.5, 10, 9, 9.5}));
  List({"TWO", "GONE", "FLAT"});
  ParseStopLossLevels("0.125,0.25,0.125", report.levels);
  report.Run({true, true, false});
  const json doc = json::parse(LiveReportJson(report));
  EXPECT_EQ(test::SchemaProblems(doc, test::LiveReportSchema()), "");

  EXPECT_EQ(doc["list"], "three");
  EXPECT_EQ(doc["date"], "2026-11-23");
  EXPECT_EQ(doc["stopLoss"], json::parse(R"({"start":0.125,"stop":0.25,"step":0.125})"));
  EXPECT_EQ(doc["rsDays"], json::parse(R"({"start":10,"stop":10,"step":1})"));
  ASSERT_EQ(doc["passes"].size(), 2u);
  const json& second = doc["passes"][1];
  EXPECT_EQ(second["stopLoss"], 0.25);
  EXPECT_EQ(second["rsDays"], 10);
  EXPECT_EQ(second["rsCheck"], false);
  EXPECT_EQ(second["unusualVolumeCheck"], false);
  EXPECT_EQ(second["buyMode"], "BoxTops");
  // TWO  Buy  3/10/2024  14.125  8.75 / GONE  Error opening stock file / FLAT  Skip
  const json& rows = second["rows"];
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0]["action"], "Buy");
  EXPECT_EQ(rows[0]["signalDate"], "2024-03-10");
  EXPECT_EQ(rows[0]["stopBuy"], 14.125);
  EXPECT_EQ(rows[0]["stopLoss"], 8.75);
  EXPECT_EQ(doc["passes"][0]["rows"][0]["stopLoss"], 8.875);
  EXPECT_EQ(rows[1], json::parse(R"({"symbol":"GONE","action":"Error"})"));
  EXPECT_EQ(rows[2]["action"], "Skip");
  EXPECT_EQ(second["buyList"], json::parse(R"(["TWO"])"));
}

TEST_F(LiveJsonTest, AnEmptyListHasItsLevelsAndNoPass) {
  List({});
  report.Run({});
  const json doc = json::parse(LiveReportJson(report));
  EXPECT_EQ(test::SchemaProblems(doc, test::LiveReportSchema()), "");
  EXPECT_TRUE(doc["passes"].empty());
}

TEST_F(LiveJsonTest, ASymbolThatIsNotUtf8IsRefusedWithAMessage) {
  Prices("TWO", test::TwoBoxes());
  Prices("\xE9t\xE9", test::TwoBoxes());
  List({"TWO", "\xE9t\xE9"});
  report.Run({true, true, false});
  EXPECT_NE(test::ErrorText([&] { LiveReportJson(report); }).find("not UTF-8"), std::string::npos);
}

}  // namespace
}  // namespace halvard::runs
