#include "halvard/engine/stock_view.h"

#include "halvard/error.h"
#include "halvard/platform/number_text.h"

namespace halvard::engine {
namespace {

enum class State { kSeekTop, kSeekBottom, kInBox };

[[noreturn]] void TooMany(const StockView& v, int limit, const char* what) {
  throw Error(v.stockFilePath + ": more than " + std::to_string(limit) + " " + what +
              " in a view of " + std::to_string(v.viewDays) + " days");
}

}  // namespace

int ViewDayCount(int view) {
  switch (view) {
    case 1:
      return 5;
    case 2:
      return 23;
    case 3:
      return 69;
    case 4:
      return 138;
    case 5:
      return 276;
    default:
      return 0;
  }
}

std::string_view ViewTitle(int view) {
  // "Thirty" and "Ninety" for the one- and three-month views: the titles users know.
  switch (view) {
    case 1:
      return "Five Day View - ";
    case 2:
      return "Thirty Day View - ";
    case 3:
      return "Ninety Day View - ";
    case 4:
      return "Six Month View - ";
    case 5:
      return "One Year View - ";
    default:
      return "";
  }
}

void SetViewDays(StockView& v, int n) {
  // The finders read every day of the view; past the last bar slot there is nothing to read.
  if (n + 1 > StockView::kMaxBars) {
    throw Error(v.stockFilePath + ": a view of " + std::to_string(n + 1) + " days is beyond the " +
                std::to_string(StockView::kMaxBars) + "-bar limit");
  }
  v.viewDays = n + 1;
}

void FindBoxes(StockView& v) {
  const auto& high = v.barHigh;
  const auto& low = v.barLow;
  v.boxCount = 0;
  State state = State::kSeekTop;
  for (int i = v.viewDays - 1; i >= 0; --i) {
    switch (state) {
      case State::kSeekTop:
        // A top needs three newer days, each with a strictly lower high.
        if (i >= 3 && high[i] > high[i - 1] && high[i] > high[i - 2] && high[i] > high[i - 3]) {
          if (v.boxCount == StockView::kMaxBoxes) TooMany(v, StockView::kMaxBoxes, "boxes");
          v.boxTopDay[v.boxCount] = static_cast<int16_t>(i);
          v.boxEndDay[v.boxCount] = -1;
          state = State::kSeekBottom;
        }
        break;
      case State::kSeekBottom:
        // Highs above the top are not looked at until the bottom is confirmed: deliberate.
        if (i >= 3 && low[i] < low[i - 1] && low[i] < low[i - 2] && low[i] < low[i - 3]) {
          v.boxBottomDay[v.boxCount] = static_cast<int16_t>(i);
          state = State::kInBox;
        }
        break;
      case State::kInBox: {
        const double top = high[v.boxTopDay[v.boxCount]];
        const double bottom = low[v.boxBottomDay[v.boxCount]];
        if (high[i] > top || low[i] < bottom) {
          v.boxEndDay[v.boxCount] = static_cast<int16_t>(i);
          v.boxBrokeUp[v.boxCount] = low[i] < bottom ? 0 : 1;  // both ways counts as down
          ++v.boxCount;
          state = State::kSeekTop;
        }
        break;
      }
    }
  }
  if (state == State::kInBox) ++v.boxCount;  // the newest box, still open
}

void FindCorvanes(StockView& v) {
  v.corvaneCount = 0;
  if (v.viewDays <= 0) return;
  double runningHigh = 0;
  int lastHighDay = -1;
  double runningLow = v.barLow[v.viewDays - 1];
  int baseLowDay = v.viewDays - 1;
  for (int i = v.viewDays - 1; i >= 41; --i) {
    if (v.barHigh[i] > runningHigh) {
      if (lastHighDay - i >= 42) {
        if (v.corvaneCount == StockView::kMaxCorvanes) {
          TooMany(v, StockView::kMaxCorvanes, "corvanes");
        }
        v.corvaneTopDay[v.corvaneCount] = static_cast<int16_t>(lastHighDay);
        v.corvaneLowDay[v.corvaneCount] = static_cast<int16_t>(baseLowDay);
        v.corvaneBreakDay[v.corvaneCount] = static_cast<int16_t>(i);
        ++v.corvaneCount;
      }
      baseLowDay = i;
      runningLow = v.barLow[i];
      lastHighDay = i;
      runningHigh = v.barHigh[i];
    }
    if (v.barLow[i] < runningLow) {  // equal lows keep the older day
      runningLow = v.barLow[i];
      baseLowDay = i;
    }
  }
}

void ComputeBoxes(StockView& v, bool draw) {
  FindBoxes(v);
  FindCorvanes(v);
  if (!draw) return;
  if (v.boxCount > StockView::kMaxDrawnBoxes) {
    TooMany(v, StockView::kMaxDrawnBoxes, "boxes to draw");
  }
  for (int k = 0; k < v.boxCount; ++k) {
    v.boxColor[k] = v.boxBrokeUp[k] == 1 ? StockView::kRed : StockView::kYellow;
  }
  for (int k = 0; k < v.boxCount; ++k) {
    if (v.boxEndDay[k] == -1) {  // an open box is drawn as a breakout in waiting
      v.boxColor[k] = StockView::kRed;
      v.boxBrokeUp[k] = 1;
    }
  }
  if (v.boxCount > 0) {
    const int k = v.boxCount - 1;
    v.lastBoxText = platform::FormatGeneral(v.barHigh[v.boxTopDay[k]]) + "," +
                    platform::FormatGeneral(v.barLow[v.boxBottomDay[k]]);
  }
}

}  // namespace halvard::engine
