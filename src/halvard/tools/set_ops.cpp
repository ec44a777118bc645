#include "halvard/tools/set_ops.h"

#include <algorithm>

#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/platform/files.h"
#include "halvard/platform/message_text.h"

namespace halvard::tools {
namespace {

std::string Key(std::string_view symbol) {
  std::string key(symbol);
  for (char& c : key) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return key;
}

}  // namespace

bool SetOps::CheckExists(const SetOps& collection, std::string_view key) {
  return collection.keys_.contains(Key(key));
}

bool SetOps::Add(const std::string& symbol) {
  if (!keys_.insert(Key(symbol)).second) return false;
  members_.push_back(symbol);
  return true;
}

template <class Drop>
void SetOps::RemoveIf(Drop drop) {
  const auto end = std::remove_if(members_.begin(), members_.end(), [&](const std::string& m) {
    if (!drop(m)) return false;
    keys_.erase(Key(m));
    return true;
  });
  members_.erase(end, members_.end());
}

void SetOps::Initialize(const std::filesystem::path& path) {
  members_.clear();
  keys_.clear();
  for (const std::string& symbol : data::ReadWatchList(path, data::Quotes::kStrip)) {
    if (!Add(symbol)) {
      throw Error(path.string() + ": the symbol " + platform::QuoteForMessage(symbol) +
                  " is in the list twice; remove one of them to combine the list");
    }
  }
}

void SetOps::SaveAs(const std::filesystem::path& path) const {
  std::string text;
  for (const std::string& m : members_) text += m + "\r\n";
  platform::WriteFileAtomically(path, text);
}

void SetOps::Union(const SetOps& other) {
  for (const std::string& m : other.members_) Add(m);
}

void SetOps::Intersect(const SetOps& other) {
  RemoveIf([&](const std::string& m) { return !CheckExists(other, m); });
}

void SetOps::Difference(const SetOps& other) {
  RemoveIf([&](const std::string& m) { return CheckExists(other, m); });
}

}  // namespace halvard::tools
