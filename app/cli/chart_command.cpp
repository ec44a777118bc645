// halvard chart SYMBOL [--view 1-5] [--width W --height H] -o FILE.svg: the chart of one symbol
// as the main window shows it, written as an SVG file (or to stdout with -o -); the status bar's
// texts on stdout (on stderr when the drawing goes to stdout).

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
  if (args.output == "-") {
    // The drawing alone on stdout, so it can be piped; the status texts go to stderr.
    std::cout << canvas.document();
    std::cerr << session->chart.title << "\n" << session->statusText << "\n";
  } else {
    platform::WriteFileAtomically(args.output, canvas.document());
    std::cout << session->chart.title << "\n" << session->statusText << "\n";
  }
}

}  // namespace

void AddChartCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<ChartArgs>();
  auto command = program.Subcommand("chart", "Draw the chart of a symbol into an SVG file");
  AddSymbolAndView(command, args->symbol, args->view);
  command.Add("--width", args->width, "Width of the drawing (default 1200)")
      .InRange(100.0, 20000.0);
  command.Add("--height", args->height, "Height of the drawing (default 800)")
      .InRange(100.0, 20000.0);
  command.Add("-o,--output", args->output, "The SVG file to write; - for stdout").Required();
  command.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
