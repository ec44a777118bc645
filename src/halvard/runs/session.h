#pragma once
// Session: what the main window owns and both front ends drive: the settings, the shown symbol
// (whose RS line the engine reads) and whether it may be drawn.

#include <memory>
#include <string>

#include "halvard/engine/stock_view.h"
#include "halvard/settings/config.h"
#include "halvard/settings/registry.h"

namespace halvard::runs {

class Session {
 public:
  explicit Session(settings::MRegistry store);

  settings::Config config;
  const settings::MRegistry& store() const { return store_; }
  engine::StockView& view() { return *view_; }
  const engine::StockView& view() const { return *view_; }
  bool chartReady = false;

  void ReadSettings() { config.ReadConfig(store_); }
  void WriteSettings() const { config.WriteConfig(store_); }

  // What every start does after reading the settings: showRS and the RS check on, RS days 10,
  // whatever was stored; then the index file of the stock folder is loaded. Returns false when
  // the index file is missing (showRS is then off and the caller shows the message).
  bool StartUp();

  // The price file of a symbol: the stock files folder, "/", the symbol, ".txt".
  std::string StockPath(const std::string& symbol) const;

  // Loads the symbol as the main window shows it: on success the RS line is computed when
  // showRS is on and the chart becomes ready. Returns false when there is no price file.
  bool ShowSymbol(const std::string& symbol);

  // The box computation of the shown chart: the current view's days, boxes computed as they are
  // drawn (so the open box counts as broken up). A view outside 1 to 5 is a halvard::UsageError.
  void ComputeShownBoxes();

 private:
  settings::MRegistry store_;
  std::unique_ptr<engine::StockView> view_;  // large: the arrays hold 1001 bars and 31001 closes
};

}  // namespace halvard::runs
