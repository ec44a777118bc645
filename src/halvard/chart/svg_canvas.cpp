#include "halvard/chart/svg_canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace halvard::chart {
namespace {

// Coordinates to a hundredth of a unit: finer than any screen, and the file stays small.
std::string Num(double value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.2f", value);
  std::string text(buffer);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string Hex(Colour colour) {
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", RedOf(colour), GreenOf(colour),
                BlueOf(colour));
  return buffer;
}

std::string Escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

}  // namespace

SvgCanvas::SvgCanvas(double width, double height) : canvasWidth_(width), canvasHeight_(height) {}

void SvgCanvas::line(double x1, double y1, double x2, double y2, Colour colour) {
  body_ += "<line x1=\"" + Num(x1) + "\" y1=\"" + Num(y1) + "\" x2=\"" + Num(x2) + "\" y2=\"" +
           Num(y2) + "\" stroke=\"" + Hex(colour) + "\" stroke-width=\"" + Num(width_) + "\"/>\n";
}

void SvgCanvas::rectangle(double x1, double y1, double x2, double y2, Colour colour, bool filled) {
  const std::string paint =
      filled ? "fill=\"" + Hex(colour) + "\""
             : "fill=\"none\" stroke=\"" + Hex(colour) + "\" stroke-width=\"" + Num(width_) + "\"";
  body_ += "<rect x=\"" + Num(std::min(x1, x2)) + "\" y=\"" + Num(std::min(y1, y2)) +
           "\" width=\"" + Num(std::abs(x2 - x1)) + "\" height=\"" + Num(std::abs(y2 - y1)) +
           "\" " + paint + "/>\n";
}

void SvgCanvas::text(double x, double y, std::string_view text, Colour colour) {
  // SVG places text by its baseline; the canvas by its top, so move down by the ascent.
  body_ += "<text x=\"" + Num(x) + "\" y=\"" + Num(y + kFontSize * 0.85) + "\" fill=\"" +
           Hex(colour) + "\">" + Escaped(text) + "</text>\n";
}

std::string SvgCanvas::document() const {
  const std::string w = Num(canvasWidth_);
  const std::string h = Num(canvasHeight_);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
         w + "\" height=\"" + h + "\" viewBox=\"0 0 " + w + " " + h +
         "\" font-family=\"sans-serif\" font-size=\"" + Num(kFontSize) +
         "\" stroke-linecap=\"butt\">\n<rect width=\"100%\" height=\"100%\" fill=\"#000000\"/>\n" +
         body_ + "</svg>\n";
}

}  // namespace halvard::chart
