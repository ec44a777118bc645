#pragma once
// The scans: each walks the symbols of the session's watch list, loads each price file (a
// missing one is skipped without a word), computes its boxes and corvanes and returns the
// symbols whose test passed, in list order: all of them, or those before a cancel.

#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "halvard/error.h"
#include "halvard/platform/progress.h"
#include "halvard/runs/session.h"

namespace halvard::runs {

using ScanSymbols = std::vector<std::string>;

// The error that ended a scan on its way through the list (a price file it cannot load), with
// the same message, and the symbols that passed before it.
class ScanStopped : public Error {
 public:
  ScanStopped(const Error& cause, ScanSymbols passed)
      : Error(cause.what()), passed_(std::move(passed)) {}
  const ScanSymbols& passed() const { return passed_; }

 private:
  ScanSymbols passed_;
};

// The symbols a scan had passed when this error ended it: those of a ScanStopped, none for an
// error raised before the scan walked the list.
const ScanSymbols& PassedBefore(const Error& error);

// The highest high of the newest weeks x 5 bars was made no more than withinDays days ago. A
// shorter history is still searched over weeks x 5 entries, whatever the arrays hold there.
ScanSymbols HighScan(Session& s, platform::Progress& progress, int weeks, int withinDays);

// Exactly one corvane, broken out fewer than maxAge days ago. (The test walks the corvanes
// upwards from the newest, so a stock with two or more is never listed: kept on purpose.)
ScanSymbols CorvaneScan(Session& s, platform::Progress& progress, int maxAge);

// The newest box is still open.
ScanSymbols InABoxScan(Session& s, platform::Progress& progress);

// Unusual volume within the last maxAge days. The day position is kept from one stock to the
// next, so only the first stock that loads can be listed: kept as it has always worked.
ScanSymbols UnusualVolumeScan(Session& s, platform::Progress& progress, int maxAge);

// The engine, in signal mode, leaves a buy signal pending on the newest day.
ScanSymbols BuySignalScan(Session& s, platform::Progress& progress);

// The engine, in signal mode, found the price below the stop loss.
ScanSymbols BelowStopLossScan(Session& s, platform::Progress& progress);

// "Processing stock #i of last", counted from 0 on both sides.
std::string ShowProgress(int index, int last);

// Writes a scan's symbols as a watch list (each followed by CR LF, then one more CR LF).
void SaveResultList(const ScanSymbols& symbols, const std::filesystem::path& file);

}  // namespace halvard::runs
