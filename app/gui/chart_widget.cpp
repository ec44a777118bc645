#include "chart_widget.h"

#include <QLabel>
#include <QPainter>
#include <QResizeEvent>

#include "painter_canvas.h"

namespace halvard::gui {

ChartWidget::ChartWidget(QWidget* parent)
    : QWidget(parent), notDownloadedError_(new QLabel(tr("Data Not Downloaded Yet"), this)) {
  setObjectName(QStringLiteral("StockGraph"));
  setMinimumSize(200, 120);
  setAttribute(Qt::WA_OpaquePaintEvent);
  notDownloadedError_->setObjectName(QStringLiteral("notDownloadedError"));
  notDownloadedError_->setAlignment(Qt::AlignCenter);
  notDownloadedError_->setAutoFillBackground(true);
  notDownloadedError_->setFrameShape(QFrame::Box);
  notDownloadedError_->setContentsMargins(12, 6, 12, 6);
  notDownloadedError_->adjustSize();
}

void ChartWidget::Draw(const std::function<void(chart::Canvas&)>& draw) {
  const qreal ratio = devicePixelRatioF();
  QImage image(size() * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::black);
  {
    QPainter painter(&image);
    PainterCanvas canvas(painter, width(), height());
    draw(canvas);
  }
  image_ = std::move(image);
  update();
}

void ChartWidget::ShowNotDownloaded(bool shown) {
  notDownloadedError_->setVisible(shown);
  if (shown) PlaceLabel();
}

void ChartWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::black);
  if (!image_.isNull()) painter.drawImage(QPointF(0, 0), image_);
}

void ChartWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceLabel();
  emit resized(width(), height());
}

void ChartWidget::PlaceLabel() {
  const QSize s = notDownloadedError_->sizeHint();
  notDownloadedError_->setGeometry((width() - s.width()) / 2, (height() - s.height()) / 2,
                                   s.width(), s.height());
}

}  // namespace halvard::gui
