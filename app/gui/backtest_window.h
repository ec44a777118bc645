#pragma once
// BacktestWindow: the backtest results window, showing the log pane of the backtests run from
// the main window ("m", "g", BackTest Current). The pane keeps every run's lines; the window
// opens scrolled to the newest.

#include "text_window.h"

namespace halvard::gui {

class BacktestWindow : public TextWindow {
 public:
  explicit BacktestWindow(QWidget* parent = nullptr)
      : TextWindow(parent, QStringLiteral("backtestResults"), QStringLiteral("Backtest Results")) {}
};

}  // namespace halvard::gui
