// The chart as the main window shows it: the session draws the view, then the boxes and
// corvanes the box computation coloured, and completes the status text with the newest box.

#include <gtest/gtest.h>

#include "halvard/chart/recording_canvas.h"
#include "runs/runs_fixture.h"

namespace halvard::runs {
namespace {

using ShowView = RunsTest;

TEST_F(ShowView, DrawsBoxesAndCorvanesAndCompletesTheStatusText) {
  Prices("CORV", test::CorvaneBreakout());
  chart::InitChart(s.chart, 400);
  chart::LayOut(s.chart, 600, 400);
  chart::RecordingCanvas canvas;
  ASSERT_TRUE(s.ShowSymbol("CORV"));
  s.ShowView(canvas);

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

}  // namespace
}  // namespace halvard::runs
