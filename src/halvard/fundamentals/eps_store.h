#pragma once
// EPSStore: the raw EPS lines of the quotes service, one a symbol, kept in eps.dat in the stock
// files folder. Each line is symbol, EPS, this year's and next year's estimate, as the service
// sent it; the key of a line read back is its text before the first comma, exactly as written.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/platform/http_client.h"

namespace halvard::fundamentals {

// The first line of the quotes line's answer for the EPS fields (with any CR the service left),
// or nothing when no answer came.
std::optional<std::string> FetchQuotesEPSLine(platform::HttpClient& http,
                                              const std::string& quotesHost,
                                              const std::string& symbol);

class EPSStore {
 public:
  // Remembers the path and reads every line as a record. A missing file is created empty.
  void ReadEPSData(const std::filesystem::path& path);
  // The same read of the file's text held in memory, as if read from path.
  void ParseEPSData(std::string_view text, const std::filesystem::path& path);
  // Rewrites the remembered file (atomically), every record in order, each ended by CR LF.
  void WriteEPSData() const;

  // Replaces the symbol's record by "symbol,EPS" at the end.
  void SetEPS(const std::string& symbol, double eps);
  // EPS = the second field of the symbol's record; unchanged when there is none.
  void GetEPS(const std::string& symbol, double& eps) const;
  // Stores the line as the symbol's record at the end, replacing any earlier one.
  void SetLine(const std::string& symbol, std::string line);
  // Keys compare without regard to case.
  bool CheckExists(const std::string& key) const;

  // Fetches the symbol's EPS line from the quotes host (a base URL) and stores it at the end,
  // replacing any earlier record. Any failure leaves success false and the records as they were.
  void downloadEPS(platform::HttpClient& http, const std::string& quotesHost,
                   const std::string& symbol, bool& success);

  struct Record {
    std::string key;
    std::string line;
  };
  const std::vector<Record>& records() const { return records_; }
  const std::filesystem::path& path() const { return path_; }

 private:
  void Remove(const std::string& key);

  std::filesystem::path path_;
  std::vector<Record> records_;
};

}  // namespace halvard::fundamentals
