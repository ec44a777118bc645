#pragma once
// The scans: each walks the symbols of the session's watch list, loads each price file (a
// missing one is skipped without a word), computes its boxes and corvanes and appends the
// symbol to the session's result text when the scan's test passes. The result text is emptied
// first, so it never carries symbols of an earlier scan.

#include <filesystem>
#include <string>

#include "halvard/platform/progress.h"
#include "halvard/runs/session.h"

namespace halvard::runs {

// The highest high of the newest weeks x 5 bars was made no more than withinDays days ago. A
// shorter history is still searched over weeks x 5 entries, whatever the arrays hold there.
void HighScan(Session& s, platform::Progress& progress, int weeks, int withinDays);

// Exactly one corvane, broken out fewer than maxAge days ago. (The test walks the corvanes
// upwards from the newest, so a stock with two or more is never listed: kept on purpose.)
void CorvaneScan(Session& s, platform::Progress& progress, int maxAge);

// The newest box is still open.
void InABoxScan(Session& s, platform::Progress& progress);

// Unusual volume within the last maxAge days. The day position is kept from one stock to the
// next, so only the first stock that loads can be listed: kept as it has always worked.
void UnusualVolumeScan(Session& s, platform::Progress& progress, int maxAge);

// The engine, in signal mode, leaves a buy signal pending on the newest day.
void BuySignalScan(Session& s, platform::Progress& progress);

// The engine, in signal mode, found the price below the stop loss.
void BelowStopLossScan(Session& s, platform::Progress& progress);

// "Processing stock #i of last", counted from 0 on both sides.
std::string ShowProgress(int index, int last);

// Writes the result text as a watch list (the text and one more CR LF).
void SaveResultList(const Session& s, const std::filesystem::path& file);

}  // namespace halvard::runs
