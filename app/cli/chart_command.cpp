// halvard chart SYMBOL [--view 1-5] [--width W --height H] -o FILE.svg: the chart of one symbol
// as the main window shows it, written as an SVG file; the status bar's texts on stdout.

#include <iostream>

#include "commands.h"
#include "halvard/chart/chart.h"
#include "halvard/chart/svg_canvas.h"
#include "halvard/error.h"
#include "halvard/platform/files.h"

namespace halvard::cli {
namespace {

struct ChartArgs {
  std::string symbol;
  int view = 0;
  double width = 1200;  // a one-year view needs about four units a day to tell the days apart
  double height = 800;
  std::string output;
};

void Run(const GlobalOptions& options, const ChartArgs& args) {
  const auto session = OpenSession(options, StartMode::kFull);
  if (args.view != 0) session->config.currentView = static_cast<int16_t>(args.view);
  chart::InitChart(session->chart, args.height);
  chart::LayOut(session->chart, args.width, args.height);
  ShowSymbolOrFail(*session, args.symbol);
  chart::SvgCanvas canvas(args.width, args.height);
  session->ShowView(canvas);
  platform::WriteFileAtomically(args.output, canvas.document());
  std::cout << session->chart.title << "\n" << session->statusText << "\n";
}

}  // namespace

void AddChartCommand(CLI::App& app, const GlobalOptions& options) {
  auto args = std::make_shared<ChartArgs>();
  auto* command = app.add_subcommand("chart", "Draw the chart of a symbol into an SVG file");
  AddSymbolAndView(*command, args->symbol, args->view);
  command->add_option("--width", args->width, "Width of the drawing (default 1200)")
      ->check(CLI::Range(100.0, 20000.0));
  command->add_option("--height", args->height, "Height of the drawing (default 800)")
      ->check(CLI::Range(100.0, 20000.0));
  command->add_option("-o,--output", args->output, "The SVG file to write")->required();
  command->callback([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
