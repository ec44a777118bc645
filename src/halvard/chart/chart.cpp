#include "halvard/chart/chart.h"

#include <cmath>

namespace halvard::chart {

double Chart::slotX(double slot) const {
  return priceFrame.left + slot / daysInView * (priceFrame.width - 2);
}

double Chart::priceY(double price) const {
  return priceFrame.bottom() - (price - priceMin) / (priceMax - priceMin) * (priceFrame.height - 2);
}

double Chart::volumeY(double volume) const {
  // Nothing traded in the whole series: every bar stays on the floor.
  if (volumeMax <= 0) return volumeFrame.bottom();
  return volumeFrame.bottom() - volume / static_cast<double>(volumeMax) * (volumeFrame.height - 2);
}

void InitChart(Chart& chart, double canvasHeight) {
  chart.fullExtent = {10, std::floor(canvasHeight - 5)};
  chart.priceExtent = {10, std::floor(canvasHeight * 0.7)};
  chart.colours = {
      .green = Rgb(0, 255, 0),
      .magenta = Rgb(255, 0, 255),
      .white = Rgb(255, 255, 255),
      .red = Rgb(255, 0, 0),
      .cyan = Rgb(0, 255, 255),
      .yellow = Rgb(255, 255, 0),
      .grey = Rgb(125, 125, 125),
  };
  chart.chartOption = true;
}

void LayOut(Chart& chart, double canvasWidth, double canvasHeight) {
  // Margins of 5 at the edges and between the areas; 70 % of the height for prices.
  const double priceHeight = (canvasHeight - 15) * 0.7;
  chart.priceFrame = {5, 5, canvasWidth - 10, priceHeight};
  chart.volumeFrame = {5, priceHeight + 10, canvasWidth - 10, (canvasHeight - 15) * 0.3};
  chart.fullExtent = {5, std::floor(canvasHeight - 5)};
  chart.priceExtent = {5, std::floor(chart.priceFrame.bottom())};
}

}  // namespace halvard::chart
