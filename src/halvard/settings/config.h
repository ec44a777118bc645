#pragma once
// Config: every user setting, read from and written to the settings store (MRegistry). The
// properties keep their long-standing names; each is a plain field, read and set as it is.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/settings/registry.h"

namespace halvard::settings {

// A date or time of day kept as a day count from 12/30/1899 (the fraction is the time).
struct DateValue {
  double serial = 0;
  friend bool operator==(const DateValue&, const DateValue&) = default;
};

class Config {
 public:
  // Paths
  std::string StockFilePath;
  std::string IncFilePath;
  std::string ReportFilePath;  // where the daily reports are written
  // Download
  DateValue downloadTime;
  DateValue downloadDate;
  bool enableAutoDownload = false;
  std::string downloadLists;  // the watch lists of the scheduled download, separated by ","
  // View
  bool showRS = false;
  int16_t currentView = 4;
  int16_t windowHeight = 5010;
  int16_t windowWidth = 12255;
  // Batch
  int16_t rsDayCurr = 10;
  bool rsCheckEnabled = true;
  bool useUnusualVolume = true;
  int16_t buyMode = 1;
  double unusualVolumePercentage = 0.25;
  double stopLossLimit = 0.125;
  int16_t jobs = 0;  // threads of a run over a list; 0 (or less): every core of the machine
  // Scans
  int16_t period52week = 12;
  int16_t periodXweek = 12;
  int16_t periodXQuantity = 4;
  int16_t periodBoxScan = 12;
  bool enableGraphUpdate = true;
  int16_t EPSRankScanPercentage = 20;
  int16_t RSRankScanPercentage = 20;

  // Fills every property from the store, in the order of the settings table; a missing value
  // takes its default text. A text that does not convert leaves its property at the default and
  // is kept (see kept); every other value is still read, then a halvard::Error names each such
  // section, value name and text, and says what was kept.
  void ReadConfig(const MRegistry& store);
  // Stores every property as text, section by section (Paths, Download, View, Batch, Scans); a
  // kept value whose property still holds what it was given is stored as the file had it.
  void WriteConfig(const MRegistry& store) const;

  // A value that writing puts back as the file had it (stored) for as long as its property
  // holds the text it was given at start (given): a text that did not convert, whose property
  // took the default, and a value set for one run only. Once the property is changed in this
  // run, its new value is written.
  struct Kept {
    std::string section, name, stored, given;
  };
  std::vector<Kept> kept;
};

// One setting as text: how "config show" lists it and how the store holds it.
struct SettingText {
  std::string section;
  std::string name;
  std::string text;
};

// Every setting as WriteConfig would store it, in the settings table's order.
std::vector<SettingText> SettingsAsText(const Config& config);

// The text of one setting (section and name match without regard to case); an unknown setting
// is a halvard::UsageError.
SettingText GetSettingText(const Config& config, std::string_view section, std::string_view name);

// Converts the text to the setting's type and stores it; returns the setting with its names as
// the table spells them and the text as it would be stored. An unknown setting or a text that
// does not convert is a halvard::UsageError.
SettingText SetSettingFromText(Config& config, std::string_view section, std::string_view name,
                               std::string_view text);

// Writes this one setting to the store as GetSettingText gives it, and no other: what a run
// records of itself (the day of the last scheduled download) must not store the run-only
// overrides of the other settings with it.
void WriteSetting(const Config& config, const MRegistry& store, std::string_view section,
                  std::string_view name);

// Sets a value for this run only, as SetSettingFromText does: writing the settings keeps the
// stored text unless the value is changed again in this run.
void SetForThisRun(Config& config, std::string_view section, std::string_view name,
                   std::string_view text);

// The default folders of a fresh machine (under the XDG data folder).
std::string DefaultStockFilePath();
std::string DefaultIncFilePath();
std::string DefaultReportFilePath();

}  // namespace halvard::settings
