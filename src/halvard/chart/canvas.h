#pragma once
// Canvas: the drawing surface the chart is drawn on, as a handful of primitives in the surface's
// own units (x to the right, y downwards), so the desktop window, an SVG file and the tests all
// receive the same drawing.

#include <cstdint>
#include <string>
#include <string_view>

namespace halvard::chart {

using Colour = uint32_t;  // 0x00BBGGRR, the order the stored box colours use

constexpr Colour Rgb(uint32_t red, uint32_t green, uint32_t blue) {
  return red | (green << 8) | (blue << 16);
}
constexpr uint32_t RedOf(Colour c) {
  return c & 0xFF;
}
constexpr uint32_t GreenOf(Colour c) {
  return (c >> 8) & 0xFF;
}
constexpr uint32_t BlueOf(Colour c) {
  return (c >> 16) & 0xFF;
}

class Canvas {
 public:
  virtual ~Canvas() = default;

  // Wipes everything drawn so far; the surface shows its background (black).
  virtual void clear() = 0;
  virtual void line(double x1, double y1, double x2, double y2, Colour colour) = 0;
  // The rectangle with corners (x1, y1) and (x2, y2), in any order.
  virtual void rectangle(double x1, double y1, double x2, double y2, Colour colour,
                         bool filled) = 0;
  // Text whose top left corner is at (x, y).
  virtual void text(double x, double y, std::string_view text, Colour colour) = 0;
  // The size of a line of text, for placing labels beside lines.
  virtual double textHeight() const = 0;
  virtual double textWidth(std::string_view text) const = 0;

  // The width of lines and outlines drawn from now on.
  virtual void setLineWidth(double width) = 0;
  virtual double lineWidth() const = 0;
};

// Sets a line width for one scope and puts the previous one back at its end.
class LineWidthScope {
 public:
  LineWidthScope(Canvas& canvas, double width) : canvas_(canvas), saved_(canvas.lineWidth()) {
    canvas_.setLineWidth(width);
  }
  ~LineWidthScope() { canvas_.setLineWidth(saved_); }
  LineWidthScope(const LineWidthScope&) = delete;
  LineWidthScope& operator=(const LineWidthScope&) = delete;

 private:
  Canvas& canvas_;
  double saved_;
};

}  // namespace halvard::chart
