#pragma once
// A session over a scratch folder that holds both the price files and the watch lists, with
// the Six Month view (139 days) and no unusual-volume search, so the hand-made series trade as
// their hand-worked logs say.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "halvard/data/watch_list.h"
#include "halvard/runs/session.h"
#include "series.h"
#include "test_support.h"

namespace halvard::runs {

class RunsTest : public ::testing::Test {
 protected:
  static constexpr int kBars = 139;

  RunsTest() {
    s.config.StockFilePath = dir.path().string();
    s.config.IncFilePath = dir.path().string();
    s.config.currentView = 4;
    s.config.useUnusualVolume = false;
  }

  void Prices(const std::string& symbol, const std::vector<test::Day>& days, int length = kBars) {
    test::WritePrices(dir / (symbol + ".txt"), days, length);
  }

  // Selects a list of these symbols, as the main window does before a run.
  void List(std::initializer_list<std::string> symbols, const std::string& name = "three") {
    test::WriteText(dir / (name + ".inc"), data::WatchListText(symbols));
    s.SelectList(name);
  }

  test::TempDir dir;
  Session s{settings::MRegistry(dir / "settings.ini")};
};

// "\n" line ends as CR LF: golden reports are kept with plain line ends.
inline std::string CrLf(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '\n') out += '\r';
    out += c;
  }
  return out;
}

}  // namespace halvard::runs
