// The chart as the main window shows it: the session draws the view, then the boxes and
// corvanes the box computation coloured, and completes the status text with the newest box.

#include <gtest/gtest.h>

#include "halvard/chart/recording_canvas.h"
#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "runs/runs_fixture.h"

namespace halvard::runs {
namespace {

class ShownSymbol : public RunsTest {
 protected:
  ShownSymbol() {
    chart::InitChart(s.chart, 400);
    chart::LayOut(s.chart, 600, 400);
    Prices("CORV", test::CorvaneBreakout());
  }

  // Shows the symbol as a list selection does and draws the view.
  bool Show(const std::string& symbol) {
    const bool loaded = s.ShowSymbol(symbol);
    s.ShowView(canvas);
    return loaded;
  }

  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const chart::Primitive& p : canvas.drawn()) {
      if (p.kind == chart::Primitive::Kind::kText) texts.push_back(p.text);
    }
    return texts;
  }

  // Outlines in a box or corvane colour (the two areas are outlined in white).
  int BoxOutlines() const {
    int n = 0;
    for (const chart::Primitive& p : canvas.drawn()) {
      n += p.kind == chart::Primitive::Kind::kRectangle && p.colour != s.chart.colours.white;
    }
    return n;
  }

  chart::RecordingCanvas canvas;
};

TEST_F(ShownSymbol, DrawsBoxesAndCorvanesAndCompletesTheStatusText) {
  ASSERT_TRUE(Show("CORV"));
  EXPECT_EQ(s.chart.title, "Six Month View - CORV");
  EXPECT_EQ(s.statusText, "Last Day - 6/8/2024: 13,17.9,16.9,17.5,1000 Last Box : 13,11 ");
  int red = 0, green = 0;
  for (const chart::Primitive& p : canvas.drawn()) {
    if (p.kind != chart::Primitive::Kind::kRectangle) continue;
    red += p.colour == engine::StockView::kRed;
    green += p.colour == engine::StockView::kGreen;
  }
  EXPECT_EQ(red, 1) << "the box broken up on p55";
  EXPECT_EQ(green, 1) << "the base from p0 to the new high on p50";

  s.chartReady = false;  // nothing loaded: the surface is cleared and stays empty
  s.ShowView(canvas);
  EXPECT_TRUE(canvas.drawn().empty());
}

// A symbol that does not load never shows the numbers of the one before under its name, not
// even after a view key makes the chart ready again.
TEST_F(ShownSymbol, AFailedLoadShowsNothingOfTheSymbolBefore) {
  ASSERT_TRUE(Show("CORV"));
  ASSERT_FALSE(canvas.drawn().empty());
  EXPECT_FALSE(Show("ZZZZ"));
  EXPECT_FALSE(s.drawable());
  EXPECT_TRUE(canvas.drawn().empty());
  EXPECT_EQ(s.chart.title, "Six Month View - ZZZZ");
  EXPECT_EQ(s.statusText, "");
  s.chartReady = true;  // a view key
  s.ShowView(canvas);
  EXPECT_TRUE(canvas.drawn().empty());
  EXPECT_EQ(s.chart.title, "Six Month View - ZZZZ");
  EXPECT_EQ(s.statusText, "");

  // A file that stops loading half-way leaves a mixture of two symbols: nothing of it shows.
  test::WriteText(dir / "HALF.txt",
                  "Date,Open,High,Low,Close,Volume\r\n"
                  "2024-06-10,1,2,1,2,100\r\n2024-06-09,1,2,x,2,100\r\n");
  EXPECT_THROW(s.ShowSymbol("HALF"), Error);
  s.chartReady = true;
  s.ShowView(canvas);
  EXPECT_TRUE(canvas.drawn().empty());
  EXPECT_EQ(s.statusText, "");
  ASSERT_TRUE(Show("CORV"));
  EXPECT_TRUE(s.drawable());
}

TEST_F(ShownSymbol, NoLastBoxTextWithoutABoxOfThisSymbol) {
  Prices("RISE", {}, 139);  // rises every day: no box
  ASSERT_TRUE(Show("CORV"));
  EXPECT_NE(s.statusText.find("Last Box : 13,11 "), std::string::npos);
  ASSERT_TRUE(Show("RISE"));
  EXPECT_EQ(s.view().boxCount, 0);
  EXPECT_TRUE(s.statusText.ends_with(" Last Box :  ")) << s.statusText;
}

// A history shorter than the view leaves slots that the symbol before filled: the box finders
// still look there (their results are the engine's), but nothing of it is drawn.
TEST_F(ShownSymbol, SlotsWithoutABarOfThisSymbolStayEmpty) {
  Prices("SHORT", {}, 20);
  ASSERT_TRUE(Show("CORV"));
  EXPECT_EQ(BoxOutlines(), 2);
  ASSERT_TRUE(Show("SHORT"));
  EXPECT_GT(s.view().boxCount + s.view().corvaneCount, 0) << "stale bars give stale boxes";
  EXPECT_EQ(BoxOutlines(), 0);
  EXPECT_TRUE(s.statusText.ends_with(" Last Box :  ")) << s.statusText;
  // Date labels only on SHORT's own days: 2/10/2024 to 2/29/2024.
  for (const std::string& text : Texts()) {
    const auto date = platform::ParseDate(text);
    if (!date) continue;
    EXPECT_GE(*date, *platform::ParseDate("2024-02-10")) << text;
    EXPECT_LE(*date, *platform::ParseDate("2024-02-29")) << text;
  }
}

// The one-year view reaches 276 days back; a year of 252 days has no date for the oldest label.
TEST_F(ShownSymbol, TheOneYearViewOfAYearOfDaysHasNoLabelBeforeItsFirstDay) {
  Prices("YEAR", {}, 252);
  s.config.currentView = 5;
  ASSERT_TRUE(Show("YEAR"));
  int dates = 0;
  for (const std::string& text : Texts()) {
    const auto date = platform::ParseDate(text);
    if (!date) continue;
    ++dates;
    EXPECT_GE(*date, *platform::ParseDate("2023-06-23")) << text;  // the file's oldest day
  }
  EXPECT_GE(dates, 5);
  EXPECT_EQ(s.chart.dateLabels[1], "") << "276 days back is before the file's first day";
}

}  // namespace
}  // namespace halvard::runs
