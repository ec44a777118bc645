#pragma once
// SetOps: the symbols of a watch list as a set that keeps its order, for combining two lists
// into a third. Members compare without regard to ASCII case; the spelling first added stays.

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace halvard::tools {

class SetOps {
 public:
  // Starts a new set from a list file: double quotes removed, blanks trimmed, empty lines
  // skipped. A missing file, or a symbol the file holds twice, is a halvard::Error naming the
  // file (and the symbol).
  void Initialize(const std::filesystem::path& path);

  // Replaces the file (atomically) with the members, each followed by CR LF.
  void SaveAs(const std::filesystem::path& path) const;

  // Adds the members of other that are missing, in other's order, after this set's own.
  void Union(const SetOps& other);
  // Keeps the members that other has too, in this set's order.
  void Intersect(const SetOps& other);
  // Removes the members that other has: this set minus other, never symmetric.
  void Difference(const SetOps& other);

  static bool CheckExists(const SetOps& collection, std::string_view key);

  const std::vector<std::string>& members() const { return members_; }

 private:
  bool Add(const std::string& symbol);  // false when a member of that key is there already
  template <class Drop>
  void RemoveIf(Drop drop);

  std::vector<std::string> members_;
  std::unordered_set<std::string> keys_;  // members with ASCII letters upper-cased
};

}  // namespace halvard::tools
