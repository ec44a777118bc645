#pragma once
// ChartWidget: the main window's drawing surface (StockGraph). The chart is drawn into an image
// of the widget's size whenever the main window shows the view, and painting only copies that
// image, so a repaint never recomputes anything. Over it sits the "Data Not Downloaded Yet"
// label, shown while the chart may not be drawn.

#include <QImage>
#include <QWidget>
#include <functional>

#include "halvard/chart/canvas.h"

class QLabel;

namespace halvard::gui {

class ChartWidget : public QWidget {
  Q_OBJECT

 public:
  explicit ChartWidget(QWidget* parent = nullptr);

  // Draws on a fresh canvas of the widget's size and shows the result.
  void Draw(const std::function<void(chart::Canvas&)>& draw);
  void ShowNotDownloaded(bool shown);

  const QImage& image() const { return image_; }

 signals:
  // The surface took a new size (in its own units); the chart lays itself out again.
  void resized(double width, double height);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void PlaceLabel();

  QImage image_;
  QLabel* notDownloadedError_;
};

}  // namespace halvard::gui
