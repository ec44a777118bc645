#include "halvard/settings/config.h"

#include <optional>

#include "halvard/platform/app_paths.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"
#include "halvard/settings/value_from_text.h"

namespace halvard::settings {
namespace {

using platform::EqualsIgnoreCase;

// A property as its stored text.
std::string ToText(const std::string& v) {
  return v;
}
std::string ToText(bool v) {
  return v ? "True" : "False";
}
std::string ToText(int16_t v) {
  return std::to_string(v);
}
std::string ToText(double v) {
  return platform::FormatRoundTrip(v);
}
std::string ToText(DateValue v) {
  return platform::FormatDateTime(v.serial);
}

// The text of a property read back with its setting type's converter.
Converted<std::string> ConvertSetting(std::string_view text, const std::string&) {
  return {std::string(text), {}};
}
Converted<bool> ConvertSetting(std::string_view text, bool) {
  return BooleanFromText(text);
}
Converted<int16_t> ConvertSetting(std::string_view text, int16_t) {
  return ShortFromText(text);
}
Converted<double> ConvertSetting(std::string_view text, double) {
  return DoubleFromText(text, NonFinite::kRefused);
}
Converted<DateValue> ConvertSetting(std::string_view text, DateValue) {
  return DateFromText(text);
}

// Calls visit(section, name, defaultText, field) for every setting, in the table's order.
template <class C, class Visitor>
void VisitSettings(C& c, Visitor&& visit) {
  visit("Paths", "Stock File Path", DefaultStockFilePath(), c.StockFilePath);
  visit("Paths", "Inc File Path", DefaultIncFilePath(), c.IncFilePath);
  visit("Paths", "Report File Path", DefaultReportFilePath(), c.ReportFilePath);
  visit("Download", "Time", "4:00 PM", c.downloadTime);
  visit("Download", "Date", "1/1/00", c.downloadDate);
  visit("Download", "Enabled", "False", c.enableAutoDownload);
  visit("Download", "Lists", "", c.downloadLists);
  visit("View", "ShowRS", "False", c.showRS);
  visit("View", "Current", "4", c.currentView);
  visit("View", "Height", "5010", c.windowHeight);
  visit("View", "Width", "12255", c.windowWidth);
  visit("Batch", "RS Days", "10", c.rsDayCurr);
  visit("Batch", "RS Check", "10", c.rsCheckEnabled);
  visit("Batch", "Use Unusual Volume", "True", c.useUnusualVolume);
  visit("Batch", "BuyMode", "1", c.buyMode);
  visit("Batch", "Unusual Volume Percentage", "0.25", c.unusualVolumePercentage);
  visit("Batch", "Stop Loss Limit", "0.125", c.stopLossLimit);
  visit("Batch", "Jobs", "0", c.jobs);
  visit("Scans", "52 Week Period", "12", c.period52week);
  visit("Scans", "X Week Period", "12", c.periodXweek);
  visit("Scans", "X Week Quantity", "4", c.periodXQuantity);
  visit("Scans", "Box scan Period", "12", c.periodBoxScan);
  visit("Scans", "Enable Graph Update", "True", c.enableGraphUpdate);
  visit("Scans", "Rank Scan Percentage", "20", c.EPSRankScanPercentage);
  visit("Scans", "RS Rank Scan Percentage", "20", c.RSRankScanPercentage);
}

std::string Describe(std::string_view section, std::string_view name, std::string_view text) {
  std::string out = "[";
  out.append(section).append("] ").append(name).append(" = ").append(
      platform::QuoteForMessage(text));
  return out;
}

// Whether the text, stored and read again, gives the same value: a text with a line break
// or spaces around it would not survive the file, a date with a fraction of a second would not
// survive its own form.
template <class Field>
bool ReadsBack(const Field& value) {
  const std::string text = ToText(value);
  return StoredTextReadsBack(text) && ConvertSetting(text, value).value == value;
}

template <class Field>
void Convert(std::string_view section, std::string_view name, std::string_view text, Field& field,
             const std::string& where) {
  Converted<Field> value = ConvertSetting(text, field);
  if (!value.value) {
    throw Error(where + "setting " + Describe(section, name, text) + " is not " + value.expected);
  }
  field = std::move(*value.value);
}

UsageError UnknownSetting(std::string_view section, std::string_view name) {
  std::string message = "there is no setting ";
  message.append(platform::QuoteForMessage(std::string(section).append("/").append(name)))
      .append(" (\"halvard config show\" lists them all)");
  return UsageError(message);
}

}  // namespace

void SetForThisRun(Config& config, std::string_view section, std::string_view name,
                   std::string_view text) {
  std::string stored = GetSettingText(config, section, name).text;
  const SettingText after = SetSettingFromText(config, section, name, text);
  // A value already kept (a text that did not convert) keeps the file's own text.
  std::erase_if(config.kept, [&](const Config::Kept& k) {
    if (k.section != after.section || k.name != after.name) return false;
    stored = k.stored;
    return true;
  });
  config.kept.push_back({after.section, after.name, stored, after.text});
}

std::string DefaultStockFilePath() {
  return (platform::DataHome() / "data").string();
}
std::string DefaultIncFilePath() {
  return (platform::DataHome() / "watchlists").string();
}
std::string DefaultReportFilePath() {
  return (platform::DataHome() / "reports").string();
}

void Config::ReadConfig(const MRegistry& store) {
  kept.clear();
  std::string problems;
  VisitSettings(*this,
                [&](const char* section, const char* name, const std::string& def, auto& field) {
                  const std::string text = store.GetString(kAppName, section, name, def);
                  try {
                    Convert(section, name, text, field, "");
                  } catch (const Error& e) {
                    Convert(section, name, def, field, "");
                    kept.push_back({section, name, text, ToText(field)});
                    problems += std::string(problems.empty() ? "" : "; ") + e.what() +
                                " (the default " + ToText(field) + " is used, and " +
                                platform::QuoteForMessage(text) + " stays in the file)";
                  }
                });
  if (!problems.empty()) throw Error(store.file().string() + ": " + problems);
}

void Config::WriteConfig(const MRegistry& store) const {
  std::vector<StoredValue> values;
  VisitSettings(*this,
                [&](const char* section, const char* name, const std::string&, const auto& field) {
                  std::string text = ToText(field);
                  for (const Kept& k : kept) {
                    if (k.section == section && k.name == name && k.given == text) text = k.stored;
                  }
                  values.push_back({section, name, std::move(text)});
                });
  store.SaveStrings(kAppName, values);
}

std::vector<SettingText> SettingsAsText(const Config& config) {
  std::vector<SettingText> all;
  VisitSettings(config,
                [&](const char* section, const char* name, const std::string&, const auto& field) {
                  all.push_back({section, name, ToText(field)});
                });
  return all;
}

SettingText GetSettingText(const Config& config, std::string_view section, std::string_view name) {
  for (SettingText& s : SettingsAsText(config)) {
    if (EqualsIgnoreCase(s.section, section) && EqualsIgnoreCase(s.name, name)) return s;
  }
  throw UnknownSetting(section, name);
}

void WriteSetting(const Config& config, const MRegistry& store, std::string_view section,
                  std::string_view name) {
  const SettingText setting = GetSettingText(config, section, name);
  store.SaveString(kAppName, setting.section, setting.name, setting.text);
}

SettingText SetSettingFromText(Config& config, std::string_view section, std::string_view name,
                               std::string_view text) {
  std::optional<SettingText> found;
  VisitSettings(config, [&](const char* s, const char* n, const std::string&, auto& field) {
    if (found || !EqualsIgnoreCase(s, section) || !EqualsIgnoreCase(n, name)) return;
    auto value = field;
    try {
      Convert(s, n, text, value, "");
    } catch (const Error& e) {
      throw UsageError(e.what());
    }
    // A value that would not read back would make every later run, and the repair, fail.
    if (!ReadsBack(value)) {
      throw UsageError("setting " + Describe(s, n, text) + " would not read back from the " +
                       "settings file as it was given");
    }
    field = value;
    found = SettingText{s, n, ToText(field)};
  });
  if (!found) throw UnknownSetting(section, name);
  return *found;
}

}  // namespace halvard::settings
