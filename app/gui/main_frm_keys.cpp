// The single-key commands of the main window. Every key press clears the chart first and shows
// the view last, so a key that does not redraw leaves the "Data Not Downloaded Yet" label up.

#include <QComboBox>

#include "backtest_window.h"
#include "dialogs.h"
#include "halvard/data/watch_list.h"
#include "halvard/settings/value_from_text.h"
#include "main_frm.h"
#include "text_editor.h"
#include "typed_number.h"

namespace halvard::gui {

void MainFrm::KeyCommand(QChar key) {
  runs::Session& s = *session_;
  s.chartReady = false;
  // Only the lower-case letter is a command: Shift+letter falls through to the view.
  switch (key.unicode()) {
    case u'5':
      SetView(1);
      break;
    case u'1':
      SetView(2);
      break;
    case u'3':
      SetView(3);
      break;
    case u'6':
      SetView(4);
      break;
    case u'y':
      SetView(5);
      break;
    case u'r':
      AskRSDays();
      break;
    case u'o':
      Toggle(s.config.useUnusualVolume, QStringLiteral("Use Unusual Volume"));
      break;
    case u'v':
      AskUnusualVolume();
      break;
    case u'f':
      AskFilter();
      break;
    case u' ':
      StepHotList(+1);
      break;
    case u'u':
      AskBuyMode();
      break;
    case u'e':
      Toggle(s.config.rsCheckEnabled, QStringLiteral("RS Check"));
      UpdateLights();
      break;
    case u'b':
      OpenBatchTest();
      break;
    case u'd':
      OpenLiveTrading();
      break;
    case u'j':
      JumpTo();
      break;
    case u'q':
      EndProgram(true);
      return;
    case u't':
      s.chart.chartOption = !s.chart.chartOption;
      s.chartReady = true;
      break;
    case u'g':
      BacktestCurrent(true);
      break;
    case u',':
      StepHotList(-1);
      break;
    case u'.':
      StepHotList(+1);
      break;
    case u'm':
      BacktestCurrent(false);
      break;
    case u'a':
      BacktestCurrent(false);
      backtestWindow_->hide();
      break;
    case u'l':
      AskStopLoss();
      break;
    default:
      break;
  }
  ShowView();
}

void MainFrm::SetView(int view) {
  session_->chartReady = true;
  session_->config.currentView = static_cast<int16_t>(view);
}

std::optional<QString> MainFrm::Ask(const QString& title, const QString& prompt) {
  return dialogs_.askText(this, title, prompt);
}

void MainFrm::Refuse(const QString& message) {
  dialogs_.message(this, QStringLiteral("Error"), message, Dialogs::Icon::kCritical);
}

template <class T>
std::optional<T> MainFrm::AskNumber(const QString& title, const QString& prompt,
                                    const QString& what) {
  const auto answer = Ask(title, prompt);
  if (!answer) return std::nullopt;
  const Typed<T> number = TypedAs(T{}, *answer, what);
  if (!number.value) Refuse(number.refusal);
  return number.value;
}

void MainFrm::AskRSDays() {
  const auto days = AskNumber<int16_t>(QStringLiteral("RS Day Comparison ..."),
                                       QStringLiteral("Enter number of days to do RS comparison?"),
                                       QStringLiteral("RS days"));
  if (!days) return;
  session_->config.rsDayCurr = *days;
  UpdateLights();
}

void MainFrm::AskUnusualVolume() {
  const auto x = AskNumber<double>(QStringLiteral("Unusual Volume"),
                                   QStringLiteral("Enter the unusual volume %age"),
                                   QStringLiteral("The unusual volume %age"));
  if (!x) return;
  if (const auto fraction = settings::FractionOrPercentage(*x)) {
    session_->config.unusualVolumePercentage = *fraction;
  }
  UpdateLights();
}

void MainFrm::AskBuyMode() {
  const auto mode = AskNumber<int16_t>(QStringLiteral("Buy Mode"),
                                       QStringLiteral("Enter buy mode 1=BoxTop, 2=bounce? "),
                                       QStringLiteral("The buy mode"));
  if (mode == 1 || mode == 2) session_->config.buyMode = *mode;
}

void MainFrm::AskStopLoss() {
  const auto x = AskNumber<double>(QStringLiteral("Stoploss ..."),
                                   QStringLiteral("Enter stop loss percentage?"),
                                   QStringLiteral("The stop loss"));
  if (!x) return;
  // Dollars below the box bottom, stored as typed (unlike the unusual volume, no division).
  session_->config.stopLossLimit = *x;
  UpdateLights();
}

void MainFrm::AskFilter() {
  const auto answer =
      Ask(QStringLiteral("Open Filter ..."), QStringLiteral("Enter the name of the inc file"));
  if (!answer) return;
  Guarded([&] { session_->SelectList(answer->toStdString()); });
  FillHotList();
}

void MainFrm::JumpTo() {
  const auto answer = Ask(QStringLiteral("Jump to ..."), QStringLiteral("Enter the Stock Symbol"));
  if (!answer) return;
  if (session_->config.StockFilePath.empty()) {
    dialogs_.message(this, QStringLiteral("Error"),
                     QStringLiteral("Please set a default path before using the jump feature"),
                     Dialogs::Icon::kNone);
    return;
  }
  // The symbol exactly as typed; the information page stays as it was.
  Guarded([&] { session_->ShowSymbol(answer->toStdString()); });
}

void MainFrm::Toggle(bool& on, const QString& name) {
  on = !on;
  dialogs_.message(this, name + QStringLiteral(" Status"),
                   name + (on ? QStringLiteral(" Enabled") : QStringLiteral(" Disabled")),
                   Dialogs::Icon::kInformation);
}

void MainFrm::StepHotList(int delta) {
  runs::Session& s = *session_;
  const int rows = static_cast<int>(s.symbols.size());
  if (rows == 0) return;
  // A cursor left beyond a shorter list by an earlier one starts again at the near end.
  int row = s.hotListCursor + delta;
  if (row < 0 || row >= rows) row = delta < 0 ? rows - 1 : 0;
  s.hotListCursor = row;
  Guarded([&] { s.ShowSymbol(s.symbols[static_cast<size_t>(row)]); });
}

void MainFrm::BacktestCurrent(bool signalMode) {
  runs::Session& s = *session_;
  Guarded([&] { s.BacktestShown(signalMode); });
  backtestWindow_->ShowLog(s.log().text());
}

void MainFrm::EditCurrent() {
  if (IncListBox_->currentIndex() < 0) {
    Refuse(QStringLiteral("There is no watch list to edit in %1")
               .arg(QString::fromStdString(session_->config.IncFilePath)));
    return;
  }
  const std::filesystem::path file = std::filesystem::path(session_->config.IncFilePath) /
                                     IncListBox_->currentText().toStdString();
  const QString why =
      OpenInTextEditor(QString::fromStdString(file.string()),
                       [this](const QString& path) { return dialogs_.openWithDesktop(path); });
  if (!why.isEmpty()) Refuse(why);
}

}  // namespace halvard::gui
