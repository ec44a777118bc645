#include "halvard/runs/daily_report_files.h"

#include <algorithm>
#include <cctype>
#include <system_error>

#include "halvard/platform/files.h"
#include "halvard/platform/text.h"
#include "halvard/runs/json_fields.h"

namespace halvard::runs {
namespace fs = std::filesystem;

namespace {

constexpr size_t kIsoDayLength = 10;  // yyyy-mm-dd

// The day of a report's file name, or "" for any other file.
std::string DailyReportDay(const fs::path& file) {
  const std::string name = file.filename().string();
  if (file.extension() != ".txt" || name.size() < kIsoDayLength + 1 + 1 + 4) return "";
  for (size_t i = 0; i < kIsoDayLength; ++i) {
    const bool dash = i == 4 || i == 7;
    if (dash ? name[i] != '-' : !std::isdigit(static_cast<unsigned char>(name[i]))) return "";
  }
  return name[kIsoDayLength] == '-' ? name.substr(0, kIsoDayLength) : "";
}

}  // namespace

std::string DailyReportStem(double day, const std::string& list) {
  fs::path name = fs::path(list).filename();
  if (platform::EqualsIgnoreCase(name.extension().string(), ".inc")) name.replace_extension();
  return IsoDate(day) + "-" + name.string();
}

std::optional<LatestDailyReports> FindLatestDailyReports(const fs::path& folder) {
  std::error_code error;
  LatestDailyReports latest;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    const std::string day = DailyReportDay(entry.path());
    if (day.empty() || !entry.is_regular_file(error)) continue;
    if (day > latest.day) {
      latest.day = day;
      latest.files.clear();
    }
    if (day == latest.day) latest.files.push_back(entry.path());
  }
  if (latest.files.empty()) return std::nullopt;
  std::sort(latest.files.begin(), latest.files.end());
  for (const fs::path& file : latest.files) {
    if (!latest.text.empty()) latest.text += "\r\n";
    latest.text += platform::ReadWholeFile(file);
  }
  return latest;
}

}  // namespace halvard::runs
