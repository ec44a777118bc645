#pragma once
// Pieces of text the live report and the batch test share, and how their reports are saved.

#include <filesystem>
#include <string>
#include <string_view>

#include "halvard/engine/back_tester.h"
#include "halvard/platform/files.h"
#include "halvard/platform/text_sink.h"

namespace halvard::runs {

inline constexpr std::string_view kDashRule = "---------------------------------------------------";
inline constexpr std::string_view kLongDashRule =
    "--------------------------------------------------------------";
inline constexpr std::string_view kStarRule = "***************************************************";
inline constexpr std::string_view kEqualsRule =
    "===================================================";

// Which switches a run passes to the engine, as the windows' three check boxes set them.
struct RunSwitches {
  bool corvane = false;          // "Corvane": the engine tries the corvanes
  bool pyramidingBoxes = false;  // "Pyramiding Boxes": the engine tries the boxes
  bool positiveRS = false;       // "+ve Relative Strength"

  // The engine's options for each stock of a run over a list.
  engine::BacktestOptions ForListRun(bool signalMode) const {
    return {.partOfListRun = true,
            .signalMode = signalMode,
            .tryCorvanes = corvane,
            .tryBoxes = pyramidingBoxes,
            .rsEnabled = positiveRS};
  }
};

// " from S to E with a step of STEP"
std::string RangeText(std::string_view from, std::string_view to, std::string_view step);

// "BoxTops" (buy mode 1) or "Bounce"; the line is "Buy Mode = " and the name.
std::string BuyModeName(int buyMode);
std::string BuyModeLine(int buyMode);

// Saves a report as a text file: its text and one more CR LF, written whole or not at all.
void SaveReport(const std::filesystem::path& file, std::string_view report);

// The same file written as the report is made: the pieces appended go into a temporary file
// beside it, and Commit adds the closing CR LF and puts it in place. Dropped without Commit (a
// cancelled run, a price file refused), it leaves whatever file stood there. The constructor,
// Append and Commit throw halvard::Error naming the file when it cannot be written.
class ReportFile : public platform::TextSink {
 public:
  explicit ReportFile(const std::filesystem::path& file) : file_(file) {}
  void Append(std::string_view piece) override { file_.Write(piece); }
  void Commit();

 private:
  platform::AtomicFile file_;
};

}  // namespace halvard::runs
