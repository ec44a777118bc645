#pragma once
// MRegistry: the settings store. Every setting is a string value, found by application name,
// section and value name. The store is one INI file ("[Section]" lines, "Value Name=text"
// lines); section and value names match without regard to case, blank lines and lines starting
// with ";" or "#" are ignored, and every other line of the file survives a write unchanged.
// The file is read once, at the first value asked for; later reads use what was read, together
// with what this store (or a copy of it) wrote since. A write reads the file afresh, so lines
// another program added in the meantime survive it.

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/error.h"

namespace halvard::settings {

// An error of the store. Its message starts with the store's own text ("AppName may not be
// empty", "Registry data not a string", ...) and goes on with where it happened.
class RegistryError : public Error {
 public:
  RegistryError(int number, const std::string& message) : Error(message), number_(number) {}
  int number() const { return number_; }

 private:
  int number_;
};

// The error numbers, counted from the base of object errors.
inline constexpr int kObjectErrorBase = -2147221504;
inline constexpr int kErrorEmptyName = kObjectErrorBase + 1001;
inline constexpr int kErrorCannotCreate = kObjectErrorBase + 1002;
inline constexpr int kErrorCannotSet = kObjectErrorBase + 1003;
inline constexpr int kErrorCannotOpen = kObjectErrorBase + 1004;
inline constexpr int kErrorNotAString = kObjectErrorBase + 2000;

inline constexpr std::string_view kAppName = "Halvard 600";

struct StoredValue {
  std::string section;
  std::string key;
  std::string value;
};

// Whether a value text survives a write and a read of the file unchanged: no line break, no
// blanks around it, not in the form of a typed registry value.
bool StoredTextReadsBack(std::string_view value);

class MRegistry {
 public:
  explicit MRegistry(std::filesystem::path file);

  // A store over a text held in memory instead of a file: read as the file would be (the errors
  // name the given file name) and written back into that text, never to disk.
  static MRegistry InMemory(std::string text, std::filesystem::path name);
  // The text of an in-memory store as its file would hold it; empty for a store over a file.
  std::string MemoryText() const;

  const std::filesystem::path& file() const { return file_; }

  void SaveString(std::string_view appName, std::string_view section, std::string_view key,
                  std::string_view value) const;
  // Several values in one write of the file, in the order given.
  void SaveStrings(std::string_view appName, const std::vector<StoredValue>& values) const;

  // The stored text, or defaultValue when the section or the value is absent. A value written in
  // a typed form of another kind ("dword:0000000a", "hex:01,02") is "Registry data not a string".
  std::string GetString(std::string_view appName, std::string_view section, std::string_view key,
                        std::string_view defaultValue) const;

  struct Document;  // the parsed file

 private:
  std::filesystem::path file_;
  // Shared by the copies of one store: one read per run, whichever copy asks first.
  std::shared_ptr<std::shared_ptr<const Document>> read_;
  // The text of an in-memory store, shared by its copies; null for a store over a file.
  std::shared_ptr<std::string> memory_;
};

}  // namespace halvard::settings
