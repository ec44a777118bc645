#pragma once
// File helpers: existence with a case-blind fallback, whole-file reads, atomic writes.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace halvard::platform {

// The path itself when it exists; otherwise an entry of the same folder whose name matches
// without regard to ASCII case (so "^ixic.txt" finds "^IXIC.txt"); otherwise nothing.
std::optional<std::filesystem::path> ResolvePath(const std::filesystem::path& path);

// True when the path names any file or folder (through the case-blind fallback as well).
bool FileExists(const std::filesystem::path& path);

// The whole content of a file; throws halvard::Error naming the file when it cannot be read.
std::string ReadWholeFile(const std::filesystem::path& path);

// The same, through the case-blind fallback of ResolvePath; nothing when no such file exists.
std::optional<std::string> ReadFileIfExists(const std::filesystem::path& path);

// Writes the content to a temporary file in the same folder and renames it over the target,
// so a failed write never leaves a truncated file where a good one stood. Throws
// halvard::Error naming the file on failure.
void WriteFileAtomically(const std::filesystem::path& path, std::string_view content);

bool EqualsIgnoreCase(std::string_view a, std::string_view b);

}  // namespace halvard::platform
