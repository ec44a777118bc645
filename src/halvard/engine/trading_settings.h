#pragma once
// TradingSettings: the settings a backtest reads, as a value the engine takes by const reference.
// A run builds it from the settings once (TradingSettingsOf) and may try other levels on copies
// of it; the engine never sees, let alone changes, the settings themselves.

#include "halvard/settings/config.h"

namespace halvard::engine {

// An unusual-volume percentage of 0 is searched with this one.
inline constexpr double kDefaultUnusualVolumePercentage = 0.25;

struct TradingSettings {
  int buyMode = 1;  // 1 BoxTops, 2 Bounce
  bool useUnusualVolume = true;
  double unusualVolumePercentage = kDefaultUnusualVolumePercentage;  // never 0
  int rsDays = 10;               // the days the RS check compares the line over
  double stopLossLimit = 0.125;  // dollars below a box bottom
};

// The percentage an unusual-volume search uses for the setting.
inline double SearchPercentage(double setting) {
  return setting == 0 ? kDefaultUnusualVolumePercentage : setting;
}

inline TradingSettings TradingSettingsOf(const settings::Config& config) {
  return {.buyMode = config.buyMode,
          .useUnusualVolume = config.useUnusualVolume,
          .unusualVolumePercentage = SearchPercentage(config.unusualVolumePercentage),
          .rsDays = config.rsDayCurr,
          .stopLossLimit = config.stopLossLimit};
}

// Once a search has run with the setting at 0, the settings hold the default it used (the
// options and a saved settings file show 0.25 from then on): whoever ran the search calls this.
inline void KeepSearchPercentage(settings::Config& config) {
  config.unusualVolumePercentage = SearchPercentage(config.unusualVolumePercentage);
}

}  // namespace halvard::engine
