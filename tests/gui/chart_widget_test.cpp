// The chart as it appears on screen: every view of the bundled samples drawn in its colours, the
// label over a cleared chart, and a redraw at the new size when the window is resized. The
// pictures are kept in the build folder (gui-screens/) for a look by eye.

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QTest>

#include "chart_widget.h"
#include "gui_test_support.h"

namespace halvard::gui::testing {
namespace {

int CountColour(const QImage& image, QRgb colour) {
  int n = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      n += (image.pixel(x, y) & 0xFFFFFF) == (colour & 0xFFFFFF);
  }
  return n;
}

// Shows the window (on the offscreen platform) and waits until it is exposed.
bool ShownOnScreen(MainFrm& w) {
  w.show();
  return QTest::qWaitForWindowExposed(&w);
}

}  // namespace

class ChartWidgetTest : public QObject {
  Q_OBJECT

 private slots:
  void everyViewIsDrawn_data() {
    QTest::addColumn<QChar>("key");
    for (const char key : {'5', '1', '3', '6', 'y'}) {
      QTest::newRow(std::string(1, key).c_str()) << QChar(key);
    }
  }
  void everyViewIsDrawn() {
    QFETCH(QChar, key);
    Opened o;
    o.w->resize(1100, 620);
    QVERIFY(ShownOnScreen(*o.w));
    o.w->KeyCommand(key);
    auto* chart = o.w->findChild<ChartWidget*>(QStringLiteral("StockGraph"));
    const QImage image = chart->image();
    QCOMPARE(image.size(), chart->size() * chart->devicePixelRatioF());
    QVERIFY(CountColour(image, qRgb(0, 255, 255)) > 0);  // range bars
    QVERIFY(CountColour(image, qRgb(0, 255, 0)) > 0);    // volume bars
    QVERIFY(CountColour(image, qRgb(255, 255, 0)) > 0);  // the RS line
    QVERIFY(o.w->findChild<QLabel*>(QStringLiteral("notDownloadedError"))->isHidden());
    QDir().mkpath(QStringLiteral("gui-screens"));
    o.w->grab().save(QStringLiteral("gui-screens/view-%1.png").arg(o.w->config().currentView));
  }

  void aClearedChartIsBlackUnderTheLabel() {
    Opened o;
    QVERIFY(ShownOnScreen(*o.w));
    o.w->KeyCommand(u'o');
    const QImage image = o.w->findChild<ChartWidget*>(QStringLiteral("StockGraph"))->image();
    QCOMPARE(CountColour(image, qRgb(0, 0, 0)), image.width() * image.height());
    QVERIFY(!o.w->findChild<QLabel*>(QStringLiteral("notDownloadedError"))->isHidden());
  }

  void resizingRedrawsAtTheNewSize() {
    Opened o;
    QVERIFY(ShownOnScreen(*o.w));
    auto* chart = o.w->findChild<ChartWidget*>(QStringLiteral("StockGraph"));
    const QSize before = chart->image().size();
    o.w->resize(o.w->width() + 200, o.w->height() + 150);
    QTRY_VERIFY(chart->image().size() != before);
    QCOMPARE(chart->image().size(), chart->size() * chart->devicePixelRatioF());
    // The price area spans the new width: the layout followed the surface.
    QCOMPARE(o.w->session().chart.priceFrame.width, chart->width() - 10.0);
  }
};

}  // namespace halvard::gui::testing

QTEST_MAIN(halvard::gui::testing::ChartWidgetTest)
#include "chart_widget_test.moc"
