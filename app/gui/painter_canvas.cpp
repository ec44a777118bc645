#include "painter_canvas.h"

#include <QPainter>

namespace halvard::gui {
namespace {

QColor ToQColor(chart::Colour c) {
  return QColor(static_cast<int>(chart::RedOf(c)), static_cast<int>(chart::GreenOf(c)),
                static_cast<int>(chart::BlueOf(c)));
}

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QFont LabelFont() {
  QFont font(QStringLiteral("Sans Serif"));
  font.setPixelSize(11);
  return font;
}

}  // namespace

PainterCanvas::PainterCanvas(QPainter& painter, double width, double height)
    : painter_(painter),
      canvasWidth_(width),
      canvasHeight_(height),
      font_(LabelFont()),
      metrics_(font_) {
  painter_.setFont(font_);
}

void PainterCanvas::clear() {
  painter_.fillRect(QRectF(0, 0, canvasWidth_, canvasHeight_), Qt::black);
}

void PainterCanvas::line(double x1, double y1, double x2, double y2, chart::Colour colour) {
  // Flat caps: a wide range bar ends exactly at the day's high and low.
  painter_.setPen(QPen(ToQColor(colour), width_, Qt::SolidLine, Qt::FlatCap));
  painter_.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void PainterCanvas::rectangle(double x1, double y1, double x2, double y2, chart::Colour colour,
                              bool filled) {
  const QRectF r = QRectF(QPointF(x1, y1), QPointF(x2, y2)).normalized();
  if (filled) {
    painter_.fillRect(r, ToQColor(colour));
    return;
  }
  painter_.setPen(QPen(ToQColor(colour), width_, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRect(r);
}

void PainterCanvas::text(double x, double y, std::string_view text, chart::Colour colour) {
  painter_.setPen(ToQColor(colour));
  painter_.drawText(QPointF(x, y + metrics_.ascent()), ToQString(text));
}

double PainterCanvas::textWidth(std::string_view text) const {
  return metrics_.horizontalAdvance(ToQString(text));
}

}  // namespace halvard::gui
