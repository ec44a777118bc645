#pragma once
// A sweep's text report as the command line hands it on while the sweep makes it: printed on
// stdout with LF line ends (unless the JSON document is printed instead) and, with
// --save-results, written to the file from the same pieces. A report of hundreds of megabytes
// is so never held whole.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "halvard/platform/text_sink.h"
#include "halvard/runs/report_text.h"
#include "terminal_progress.h"

namespace halvard::cli {

class ReportStream : public platform::TextSink {
 public:
  // Nothing is printed when print is false; nothing is saved when saveFile is empty. The
  // progress line is cleared before each piece printed (the next step draws it again).
  ReportStream(bool print, const std::filesystem::path& saveFile, TerminalProgress& progress);

  void Append(std::string_view piece) override;

  // Puts the saved report in place. A file that could not be written is said here, after the
  // whole report was printed, as a report saved once printed would say it; without this call
  // (a cancelled run, a refused price file) the file is left as it stood.
  void Save();

 private:
  bool print_;
  TerminalProgress& progress_;
  std::optional<runs::ReportFile> file_;
  std::string saveFailure_;
  std::string printed_;  // the piece with LF line ends, its memory kept from piece to piece
};

}  // namespace halvard::cli
