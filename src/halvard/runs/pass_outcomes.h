#pragma once
// What the later passes of a sweep's group made of each stock of the list, kept from the walk
// of the group's first pass until each pass is walked from them.

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <string_view>
#include <vector>

#include "halvard/engine/back_tester.h"
#include "halvard/platform/text_sink.h"

namespace halvard::runs {

// What one more backtest of a stock left: the engine's run state and flags, or the error it
// stopped on (with the flags as they stood then).
struct PassOutcome {
  engine::BackTester::RunState state{};
  bool unusualVolumeFound = false;
  bool unusualVolumeSearched = false;
  std::exception_ptr error;
  // Where its log and (when it is not held here) its result row end in the stock's text.
  size_t logEnd = 0;
  size_t rowEnd = 0;
  // The result row when it fits (nearly every row does): the walk of a pass then reads it
  // beside the outcome instead of from the stock's buffer.
  static constexpr size_t kRowRoom = 86;
  static constexpr uint8_t kRowInText = 0xff;
  uint8_t rowSize = 0;
  std::array<char, kRowRoom> row;
};

// The outcomes of `passes` passes over `stocks` stocks. Each stock's are written by one thread
// (the one that backtests it) and read once it is handed over, so threads never share a stock;
// an error ends a stock's passes (the walk of that pass stops there, so none after it is read).
// They are held pass by pass: the walk of a pass reads its stocks' outcomes one after the other
// in memory, not one from each stock's own buffer. A stock's texts are one buffer: each pass's
// log (empty when the log is not kept), then its result row when the outcome cannot hold it.
class PassOutcomes {
 public:
  // Room for stocks x passes, with no outcome yet (the buffers of earlier use are kept).
  void Reset(size_t stocks, size_t passes) {
    stocks_ = stocks;
    outcomes_.resize(stocks * passes);
    texts_.resize(stocks);
  }

  PassOutcome& at(size_t stock, size_t pass) { return outcomes_[pass * stocks_ + stock]; }
  const PassOutcome& at(size_t stock, size_t pass) const {
    return outcomes_[pass * stocks_ + stock];
  }
  platform::StringSink& text(size_t stock) { return texts_[stock]; }

  std::string_view Log(size_t stock, size_t pass) const {
    return Text(stock, pass == 0 ? 0 : at(stock, pass - 1).rowEnd, at(stock, pass).logEnd);
  }
  std::string_view Row(size_t stock, size_t pass) const {
    const PassOutcome& o = at(stock, pass);
    if (o.rowSize == PassOutcome::kRowInText) return Text(stock, o.logEnd, o.rowEnd);
    return {o.row.data(), o.rowSize};
  }
  // Keeps the result row of a pass whose log is written: none when it writes none.
  void KeepRow(size_t stock, size_t pass, std::string_view row) {
    PassOutcome& o = at(stock, pass);
    platform::StringSink& text = texts_[stock];
    o.logEnd = text.text().size();
    if (row.size() <= PassOutcome::kRowRoom) {
      o.rowSize = static_cast<uint8_t>(row.size());
      std::copy(row.begin(), row.end(), o.row.begin());
    } else {
      o.rowSize = PassOutcome::kRowInText;
      text.Append(row);
    }
    o.rowEnd = text.text().size();
  }

 private:
  std::string_view Text(size_t stock, size_t from, size_t to) const {
    return std::string_view(texts_[stock].text()).substr(from, to - from);
  }

  size_t stocks_ = 0;
  std::vector<PassOutcome> outcomes_;
  std::vector<platform::StringSink> texts_;
};

}  // namespace halvard::runs
