#pragma once
// PainterCanvas: the chart's Canvas drawn with a QPainter, on whatever the painter paints (the
// main window paints into an image of the chart's size and shows that).

#include <QFont>
#include <QFontMetricsF>

#include "halvard/chart/canvas.h"

class QPainter;

namespace halvard::gui {

class PainterCanvas : public chart::Canvas {
 public:
  // The painter must stay active while the canvas is used; width and height are what clear()
  // wipes.
  PainterCanvas(QPainter& painter, double width, double height);

  void clear() override;
  void line(double x1, double y1, double x2, double y2, chart::Colour colour) override;
  void rectangle(double x1, double y1, double x2, double y2, chart::Colour colour,
                 bool filled) override;
  void text(double x, double y, std::string_view text, chart::Colour colour) override;
  double textHeight() const override { return metrics_.height(); }
  double textWidth(std::string_view text) const override;
  void setLineWidth(double width) override { width_ = width; }
  double lineWidth() const override { return width_; }

 private:
  QPainter& painter_;
  double canvasWidth_;
  double canvasHeight_;
  double width_ = 1;
  QFont font_;
  QFontMetricsF metrics_;
};

}  // namespace halvard::gui
