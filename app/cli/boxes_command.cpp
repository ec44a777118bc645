// halvard boxes SYMBOL [--view 1-5] [--json]: the boxes and corvanes of one symbol.

#include <iostream>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "halvard/data/file_parser.h"
#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::cli {
namespace {

using engine::StockView;
using platform::FormatGeneral;

struct BoxesArgs {
  std::string symbol;
  int view = 0;
  bool json = false;
};

std::string Day(const StockView& v, int day) {
  const std::string date =
      day < v.barCount ? platform::FormatShortDate(v.barDate[day]) : std::string("no data");
  return date + " (day " + std::to_string(day) + ")";
}

void PrintBoxesJson(const StockView& v) {
  nlohmann::ordered_json out;
  out["symbol"] = v.stockSymbol;
  out["barCount"] = v.barCount;
  out["viewDays"] = v.viewDays;
  out["boxes"] = nlohmann::ordered_json::array();
  for (int k = 0; k < v.boxCount; ++k) {
    out["boxes"].push_back({v.boxTopDay[k], v.boxBottomDay[k], v.boxEndDay[k], v.boxBrokeUp[k]});
  }
  out["corvanes"] = nlohmann::ordered_json::array();
  for (int k = 0; k < v.corvaneCount; ++k) {
    out["corvanes"].push_back({v.corvaneTopDay[k], v.corvaneLowDay[k], v.corvaneBreakDay[k]});
  }
  try {
    std::cout << out.dump() << "\n";
  } catch (const nlohmann::json::type_error&) {
    // JSON is UTF-8 text: a symbol taken from a file name in another encoding cannot be written.
    throw Error("the symbol " + platform::QuoteForMessage(v.stockSymbol) +
                " is not UTF-8 text, which JSON output needs");
  }
}

void PrintText(const StockView& v, int view) {
  std::string title(engine::ViewTitle(view));
  title.resize(title.size() - 3);  // without its " - "
  std::cout << v.stockSymbol << ": " << title << ", " << v.viewDays << " days of " << v.barCount
            << " bars (newest " << platform::FormatShortDate(v.newestDate) << ")\n";
  std::cout << "Boxes: " << v.boxCount << "\n";
  for (int k = 0; k < v.boxCount; ++k) {
    std::cout << "  " << k << "  top " << FormatGeneral(v.barHigh[v.boxTopDay[k]]) << " on "
              << Day(v, v.boxTopDay[k]) << ", bottom " << FormatGeneral(v.barLow[v.boxBottomDay[k]])
              << " on " << Day(v, v.boxBottomDay[k]) << ", ";
    if (v.boxEndDay[k] == -1) {
      std::cout << "open\n";
    } else {
      std::cout << (v.boxBrokeUp[k] == 1 ? "broke up" : "broke down") << " on "
                << Day(v, v.boxEndDay[k]) << "\n";
    }
  }
  std::cout << "Corvanes: " << v.corvaneCount << "\n";
  for (int k = 0; k < v.corvaneCount; ++k) {
    std::cout << "  " << k << "  high " << FormatGeneral(v.barHigh[v.corvaneTopDay[k]]) << " on "
              << Day(v, v.corvaneTopDay[k]) << ", base low "
              << FormatGeneral(v.barLow[v.corvaneLowDay[k]]) << " on " << Day(v, v.corvaneLowDay[k])
              << ", new high " << FormatGeneral(v.barHigh[v.corvaneBreakDay[k]]) << " on "
              << Day(v, v.corvaneBreakDay[k]) << "\n";
  }
}

void Run(const GlobalOptions& options, const BoxesArgs& args) {
  const auto session = OpenSession(options, StartMode::kFull);
  const int view = args.view != 0 ? args.view : session->config.currentView;
  if (engine::ViewDayCount(view) == 0) {
    throw UsageError("the current view setting is " + std::to_string(view) +
                     "; choose a view from 1 to 5 with --view");
  }
  StockView& v = session->view();
  const std::string path = session->StockPath(args.symbol);
  if (!data::LoadStockFile(v, path)) {
    throw Error("no price file for " + args.symbol + ": " + path + " does not exist");
  }
  engine::SetViewDays(v, engine::ViewDayCount(view));
  engine::ComputeBoxes(v, false);
  if (args.json) {
    PrintBoxesJson(v);
  } else {
    PrintText(v, view);
  }
}

}  // namespace

void AddBoxesCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<BoxesArgs>();
  auto boxes = program.Subcommand("boxes", "Find the boxes and corvanes of a symbol");
  AddSymbolAndView(boxes, args->symbol, args->view);
  boxes.Flag("--json", args->json, "Print one JSON object");
  boxes.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
