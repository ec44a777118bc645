#pragma once
// Dates as the program keeps them: a day count (double) from 12/30/1899, the fraction of a day
// being the time of day. Parsing accepts the forms found in price files and the settings file;
// formatting gives the short forms the reports print (M/d/yyyy, h:mm:ss AM).

#include <optional>
#include <string>
#include <string_view>

namespace halvard::platform {

struct CivilDate {
  int year = 0;
  int month = 0;
  int day = 0;
};

double SerialFromCivil(CivilDate date);
CivilDate CivilFromSerial(double serial);

// A calendar date: yyyy-mm-dd, M/d/yyyy, M/d/yy or d-Mon-yy (d-Mon-yyyy). Two-digit years
// 00-29 are 2000-2029 and 30-99 are 1930-1999. Spaces around the text are ignored.
std::optional<double> ParseDate(std::string_view text);

// A date, a time of day ("4:00 PM", "16:00", "4:00:00 PM") or a date followed by a time.
std::optional<double> ParseDateTime(std::string_view text);

std::string FormatShortDate(double serial);  // 11/7/2003
std::string FormatTime(double serial);       // 4:00:00 PM
// A date with no time prints as a date, a time on day 0 as a time, anything else as both.
std::string FormatDateTime(double serial);

}  // namespace halvard::platform
