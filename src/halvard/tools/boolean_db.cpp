#include "halvard/tools/boolean_db.h"

#include <array>

#include "halvard/error.h"
#include "halvard/platform/files.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/text.h"
#include "halvard/tools/set_ops.h"

namespace halvard::tools {

void BooleanDB::ReadFile(const std::filesystem::path& path, bool createIfMissing) {
  const auto text = platform::ReadFileIfExists(path);
  ReadText(text.value_or(""), path);
  if (!text && createIfMissing) platform::WriteFileAtomically(path, "");
}

void BooleanDB::ReadText(std::string_view text, const std::filesystem::path& path) {
  path_ = path;
  records_.clear();
  position_ = 0;
  platform::LineReader reader(text);
  for (std::string_view line; reader.Next(line);) records_.emplace_back(line);
}

void BooleanDB::WriteFile() const {
  std::string text;
  for (const std::string& r : records_) text += r + "\r\n";
  platform::WriteFileAtomically(path_, text);
}

void BooleanDB::DeleteCurr() {
  if (OnView()) records_.erase(records_.begin() + position_);
}

void BooleanDB::MoveNext() {
  if (position_ + 1 < count()) ++position_;
}

void BooleanDB::AddRecord(const std::string& first, const std::string& second,
                          const std::string& operation, const std::string& result) {
  for (const std::string* name : {&first, &second, &operation, &result}) {
    if (name->find(':') != std::string::npos) {
      throw UsageError(platform::QuoteForMessage(*name) +
                       " holds a \":\", which separates the fields of " +
                       std::string(kBooleanDBFileName) + "; choose a name without it");
    }
  }
  records_.push_back(first + ":" + operation + ":" + second + ":" + result);
}

bool BooleanDB::getCurrent(std::string& first, std::string& second, std::string& operation,
                           std::string& result) const {
  if (!OnView()) return false;
  std::array<std::string_view, 4> fields;
  if (platform::SplitFields(records_[position_], fields, ':') < 4) {
    throw Error(path_.string() + " line " + std::to_string(position_ + 1) + ": " +
                platform::QuoteForMessage(records_[position_]) +
                " is not first:operation:second:result (fewer than four fields)");
  }
  first = fields[0];
  operation = fields[1];
  second = fields[2];
  result = fields[3];
  return true;
}

std::string BooleanDB::StatusRecordText() const {
  return OnView() ? " Currently Viewing Record #" + std::to_string(position_ + 1)
                  : " Edit data and add a new record by clicking Add";
}

std::string BooleanDB::StatusCountText() const {
  // Before the first record (after "<") the file still holds its records.
  return count() > 0 ? std::to_string(count()) + " Records in file " : " Empty boolean data file";
}

size_t RunCurr(const std::filesystem::path& listFolder, const SetOpRecord& record) {
  if (record.result.empty()) return 0;
  SetOps a;
  SetOps b;
  a.Initialize(listFolder / record.firstList);
  b.Initialize(listFolder / record.secondList);
  using platform::EqualsIgnoreCase;
  if (EqualsIgnoreCase(record.operation, "union")) {
    a.Union(b);
  } else if (EqualsIgnoreCase(record.operation, "intersect")) {
    a.Intersect(b);
  } else if (EqualsIgnoreCase(record.operation, "difference")) {
    a.Difference(b);
  }
  a.SaveAs(listFolder / record.result);
  return a.members().size();
}

int RunAll(const std::filesystem::path& listFolder, BooleanDB& db) {
  int run = 0;
  for (int k = 0; k < db.count(); ++k) {
    db.setPosition(k);
    SetOpRecord r;
    db.getCurrent(r.firstList, r.secondList, r.operation, r.result);
    RunCurr(listFolder, r);
    ++run;
  }
  return run;
}

}  // namespace halvard::tools
