#pragma once
// SvgCanvas: draws into a standalone SVG document of a fixed size, black background, one
// element per primitive, for charts written to a file.

#include <string>

#include "halvard/chart/canvas.h"

namespace halvard::chart {

class SvgCanvas : public Canvas {
 public:
  SvgCanvas(double width, double height);

  void clear() override { body_.clear(); }
  void line(double x1, double y1, double x2, double y2, Colour colour) override;
  void rectangle(double x1, double y1, double x2, double y2, Colour colour, bool filled) override;
  void text(double x, double y, std::string_view text, Colour colour) override;
  double textHeight() const override { return kFontSize; }
  // An estimate: the viewer picks the font; digits of a sans-serif face are about 0.64 em wide.
  double textWidth(std::string_view text) const override { return 0.64 * kFontSize * text.size(); }
  void setLineWidth(double width) override { width_ = width; }
  double lineWidth() const override { return width_; }

  // The whole document as drawn so far.
  std::string document() const;

 private:
  static constexpr double kFontSize = 11;

  double width_ = 1;
  double canvasWidth_;
  double canvasHeight_;
  std::string body_;
};

}  // namespace halvard::chart
