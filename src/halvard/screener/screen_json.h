#pragma once
// The JSON document of a screen: the symbols found, the files skipped, the criteria not applied
// and the pages fetched, with the fields of the README's "JSON output".

#include "halvard/runs/json_fields.h"
#include "halvard/screener/screen_result.h"

namespace halvard::screener {

runs::JsonDocument ScreenJson(const ScreenResult& result);

}  // namespace halvard::screener
