#include "halvard/settings/registry.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <optional>

#include "halvard/platform/files.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/text.h"

namespace halvard::settings {
namespace fs = std::filesystem;
using platform::EqualsIgnoreCase;
using platform::TrimSpaces;

// The file as read: every line, with what it means.
struct MRegistry::Document {
  struct Line {
    std::string text;
    enum class Kind { kOther, kSection, kValue } kind = Kind::kOther;
    std::string name;  // section or value name
    std::string value;
  };
  std::vector<Line> lines;
};

namespace {

using Document = MRegistry::Document;
using Line = Document::Line;

void CheckNames(std::string_view appName, std::string_view section, std::string_view key) {
  if (appName.empty()) throw RegistryError(kErrorEmptyName, "AppName may not be empty");
  if (section.empty()) throw RegistryError(kErrorEmptyName, "Section may not be empty");
  if (key.empty()) throw RegistryError(kErrorEmptyName, "Key may not be empty");
}

Line ParseLine(std::string text, const fs::path& file, size_t number) {
  Line line;
  line.text = std::move(text);
  const std::string_view t = TrimSpaces(line.text);
  if (t.empty() || t.front() == ';' || t.front() == '#') return line;
  if (t.front() == '[') {
    if (t.back() != ']') {
      throw Error(file.string() + " line " + std::to_string(number) +
                  ": a section line must end with \"]\"");
    }
    line.kind = Line::Kind::kSection;
    line.name = std::string(TrimSpaces(t.substr(1, t.size() - 2)));
    return line;
  }
  const size_t eq = t.find('=');
  if (eq == std::string_view::npos) {
    throw Error(file.string() + " line " + std::to_string(number) +
                ": expected \"[Section]\" or \"Value Name=text\"");
  }
  line.kind = Line::Kind::kValue;
  line.name = std::string(TrimSpaces(t.substr(0, eq)));
  line.value = std::string(TrimSpaces(t.substr(eq + 1)));
  return line;
}

Document Parse(std::string_view content, const fs::path& file) {
  Document doc;
  platform::LineReader reader(content);
  std::string_view line;
  while (reader.Next(line))
    doc.lines.push_back(ParseLine(std::string(line), file, reader.number()));
  return doc;
}

// The document of the file, or of the in-memory text when there is one; an empty one when the
// file does not exist.
Document Load(const fs::path& file, const std::string* memory, int errorNumber,
              const char* errorText) {
  try {
    if (memory) return Parse(*memory, file);
    struct stat st;
    if (::stat(file.c_str(), &st) != 0 && errno == ENOENT) return Document{};
    return Parse(platform::ReadWholeFile(file), file);
  } catch (const RegistryError&) {
    throw;
  } catch (const Error& e) {
    throw RegistryError(errorNumber, std::string(errorText) + ": " + e.what());
  }
}

// Index of the section's header line, if any.
std::optional<size_t> FindSection(const Document& doc, std::string_view section) {
  for (size_t i = 0; i < doc.lines.size(); ++i) {
    const Line& l = doc.lines[i];
    if (l.kind == Line::Kind::kSection && EqualsIgnoreCase(l.name, section)) return i;
  }
  return std::nullopt;
}

// Index just past the section's last line (its next section header or the end).
size_t SectionEnd(const Document& doc, size_t header) {
  size_t i = header + 1;
  while (i < doc.lines.size() && doc.lines[i].kind != Line::Kind::kSection) ++i;
  return i;
}

std::optional<size_t> FindValue(const Document& doc, size_t header, std::string_view key) {
  const size_t end = SectionEnd(doc, header);
  for (size_t i = header + 1; i < end; ++i) {
    const Line& l = doc.lines[i];
    if (l.kind == Line::Kind::kValue && EqualsIgnoreCase(l.name, key)) return i;
  }
  return std::nullopt;
}

bool IsHexList(std::string_view s) {
  for (char c : s) {
    const bool hex = (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'f');
    if (!hex && c != ',' && c != ' ') return false;
  }
  return true;
}

// The notation of a registry export for values that are not strings.
bool IsTypedValue(std::string_view v) {
  if (v.size() == 14 && v.substr(0, 6) == "dword:") return IsHexList(v.substr(6));
  if (v.substr(0, 4) == "hex:") return IsHexList(v.substr(4));
  if (v.substr(0, 4) == "hex(") {
    const size_t close = v.find("):");
    return close != std::string_view::npos && IsHexList(v.substr(close + 2));
  }
  return false;
}

void Set(Document& doc, const StoredValue& v) {
  Line line{v.key + "=" + v.value, Line::Kind::kValue, v.key, v.value};
  auto header = FindSection(doc, v.section);
  if (!header) {
    if (!doc.lines.empty() && !TrimSpaces(doc.lines.back().text).empty()) {
      doc.lines.push_back(Line{});
    }
    doc.lines.push_back(Line{"[" + v.section + "]", Line::Kind::kSection, v.section, ""});
    doc.lines.push_back(std::move(line));
    return;
  }
  if (auto at = FindValue(doc, *header, v.key)) {
    doc.lines[*at] = std::move(line);
    return;
  }
  // After the section's last non-blank line, so a blank line before the next section stays.
  size_t at = SectionEnd(doc, *header);
  while (at > *header + 1 && TrimSpaces(doc.lines[at - 1].text).empty()) --at;
  doc.lines.insert(doc.lines.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
}

}  // namespace

bool StoredTextReadsBack(std::string_view value) {
  return value.find_first_of("\r\n") == std::string_view::npos && TrimSpaces(value) == value &&
         !IsTypedValue(value);
}

MRegistry::MRegistry(fs::path file)
    : file_(std::move(file)), read_(std::make_shared<std::shared_ptr<const Document>>()) {}

MRegistry MRegistry::InMemory(std::string text, fs::path name) {
  MRegistry store(std::move(name));
  store.memory_ = std::make_shared<std::string>(std::move(text));
  return store;
}

std::string MRegistry::MemoryText() const {
  return memory_ ? *memory_ : std::string();
}

void MRegistry::SaveString(std::string_view appName, std::string_view section, std::string_view key,
                           std::string_view value) const {
  SaveStrings(appName, {{std::string(section), std::string(key), std::string(value)}});
}

void MRegistry::SaveStrings(std::string_view appName,
                            const std::vector<StoredValue>& values) const {
  for (const StoredValue& v : values) CheckNames(appName, v.section, v.key);
  Document doc =
      Load(file_, memory_.get(), kErrorCannotCreate, "Could not open/create registry section");
  for (const StoredValue& v : values) Set(doc, v);
  std::string content;
  for (const Line& l : doc.lines) {
    content += l.text;
    content += "\r\n";
  }
  if (memory_) {
    *memory_ = std::move(content);
    *read_ = std::make_shared<const Document>(std::move(doc));
    return;
  }
  std::error_code ec;
  if (file_.has_parent_path()) fs::create_directories(file_.parent_path(), ec);
  if (ec) {
    throw RegistryError(kErrorCannotCreate, "Could not open/create registry section: " +
                                                file_.parent_path().string() + ": " + ec.message());
  }
  try {
    // It may hold the keys of services: for its owner's eyes only.
    platform::WriteFileAtomically(file_, content, platform::NewFileMode::kPrivate);
  } catch (const Error& e) {
    throw RegistryError(kErrorCannotSet, std::string("Could not set key value: ") + e.what());
  }
  *read_ = std::make_shared<const Document>(std::move(doc));
}

std::string MRegistry::GetString(std::string_view appName, std::string_view section,
                                 std::string_view key, std::string_view defaultValue) const {
  CheckNames(appName, section, key);
  if (!*read_) {
    *read_ = std::make_shared<const Document>(
        Load(file_, memory_.get(), kErrorCannotOpen, "Could not open registry section"));
  }
  const Document& doc = **read_;
  const auto header = FindSection(doc, section);
  if (!header) return std::string(defaultValue);
  const auto at = FindValue(doc, *header, key);
  if (!at) return std::string(defaultValue);
  const std::string& value = doc.lines[*at].value;
  if (IsTypedValue(value)) {
    throw RegistryError(kErrorNotAString, "Registry data not a string: [" + std::string(section) +
                                              "] " + std::string(key) + " in " + file_.string());
  }
  return value;
}

}  // namespace halvard::settings
