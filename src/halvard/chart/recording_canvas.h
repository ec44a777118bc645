#pragma once
// RecordingCanvas: keeps every primitive drawn on it, in order, so the drawing can be checked
// number by number without pixels.

#include <string>
#include <vector>

#include "halvard/chart/canvas.h"

namespace halvard::chart {

struct Primitive {
  enum class Kind { kLine, kRectangle, kFilledRectangle, kText };
  Kind kind;
  double x1, y1, x2, y2;  // a text has its position in (x1, y1)
  Colour colour;
  double lineWidth;  // the width in force when it was drawn
  std::string text;
};

class RecordingCanvas : public Canvas {
 public:
  void clear() override {
    drawn_.clear();
    ++clears_;
  }
  void line(double x1, double y1, double x2, double y2, Colour colour) override {
    drawn_.push_back({Primitive::Kind::kLine, x1, y1, x2, y2, colour, width_, {}});
  }
  void rectangle(double x1, double y1, double x2, double y2, Colour colour, bool filled) override {
    const auto kind = filled ? Primitive::Kind::kFilledRectangle : Primitive::Kind::kRectangle;
    drawn_.push_back({kind, x1, y1, x2, y2, colour, width_, {}});
  }
  void text(double x, double y, std::string_view text, Colour colour) override {
    drawn_.push_back({Primitive::Kind::kText, x, y, x, y, colour, width_, std::string(text)});
  }
  double textHeight() const override { return 10; }
  double textWidth(std::string_view text) const override { return 6.0 * text.size(); }
  void setLineWidth(double width) override { width_ = width; }
  double lineWidth() const override { return width_; }

  const std::vector<Primitive>& drawn() const { return drawn_; }
  int clears() const { return clears_; }

 private:
  std::vector<Primitive> drawn_;
  double width_ = 1;
  int clears_ = 0;
};

}  // namespace halvard::chart
