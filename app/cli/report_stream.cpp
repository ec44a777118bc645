#include "report_stream.h"

#include <iostream>

#include "commands.h"
#include "halvard/error.h"

namespace halvard::cli {

ReportStream::ReportStream(bool print, const std::filesystem::path& saveFile,
                           TerminalProgress& progress)
    : print_(print), progress_(progress) {
  if (saveFile.empty()) return;
  try {
    file_.emplace(saveFile);
  } catch (const Error& e) {
    saveFailure_ = e.what();
  }
}

void ReportStream::Append(std::string_view piece) {
  if (print_) {
    progress_.ClearLine();
    printed_.clear();
    AppendWithLineFeeds(piece, printed_);
    std::cout << printed_ << std::flush;  // before the progress is drawn again
  }
  if (!file_) return;
  try {
    file_->Append(piece);
  } catch (const Error& e) {
    saveFailure_ = e.what();
    file_.reset();
  }
}

void ReportStream::Save() {
  if (!saveFailure_.empty()) throw Error(saveFailure_);
  if (file_) file_->Commit();
}

}  // namespace halvard::cli
