#include "main_frm.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "backtest_window.h"
#include "chart_widget.h"
#include "dialogs.h"
#include "download_timer.h"
#include "elided_label.h"
#include "halvard/data/file_parser.h"
#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/platform/app_paths.h"
#include "halvard/platform/number_text.h"
#include "halvard/runs/start_session.h"
#include "halvard/runs/stock_info.h"
#include "progress_window.h"
#include "run_aside.h"

namespace halvard::gui {
namespace {

QString Q(const std::string& text) {
  return QString::fromStdString(text);
}

QLineEdit* ReadOnlyField(const char* name) {
  auto* field = new QLineEdit;
  field->setObjectName(QString::fromLatin1(name));
  field->setReadOnly(true);
  return field;
}

}  // namespace

MainFrm::MainFrm(const StartOptions& options, Dialogs& dialogs, QWidget* parent)
    : QMainWindow(parent),
      dialogs_(dialogs),
      eventLog_(options.eventLogFile.empty() ? platform::DefaultEventLogFile()
                                             : options.eventLogFile),
      session_(std::make_unique<runs::Session>(runs::SettingsStoreAt(options.configFile))) {
  setObjectName(QStringLiteral("MainFrm"));
  setWindowTitle(QStringLiteral("Halvard 600"));
  BuildWindow();
  BuildMenus();
  StartUp(options);
  // Keys typed anywhere in this window reach the commands first, whichever control has focus.
  qApp->installEventFilter(this);
}

MainFrm::~MainFrm() {
  qApp->removeEventFilter(this);
}

void MainFrm::BuildWindow() {
  auto* central = new QWidget(this);
  auto* columns = new QHBoxLayout(central);
  columns->setContentsMargins(4, 4, 4, 4);

  auto* frame = new QGroupBox(QStringLiteral("Watch List"), central);
  frame->setObjectName(QStringLiteral("WatchListFrame"));
  frame->setFixedWidth(150);
  auto* lists = new QVBoxLayout(frame);
  IncListBox_ = new QComboBox(frame);
  IncListBox_->setObjectName(QStringLiteral("IncListBox"));
  HotList_ = new QListWidget(frame);
  HotList_->setObjectName(QStringLiteral("HotList"));
  lists->addWidget(IncListBox_);
  lists->addWidget(HotList_, 1);
  columns->addWidget(frame);

  stockInfo_ = new QTabWidget(central);
  stockInfo_->setObjectName(QStringLiteral("stockInfo"));
  StockGraph_ = new ChartWidget(stockInfo_);
  stockInfo_->addTab(StockGraph_, QStringLiteral("Graph"));

  auto* info = new QWidget(stockInfo_);
  info->setObjectName(QStringLiteral("InfoBox"));
  auto* form = new QFormLayout(info);
  companyName_ = new QLabel(QStringLiteral("Company"), info);
  companyName_->setObjectName(QStringLiteral("companyName"));
  QFont bigger = companyName_->font();
  bigger.setBold(true);
  bigger.setPointSizeF(bigger.pointSizeF() * 1.3);
  companyName_->setFont(bigger);
  form->addRow(companyName_);
  Exchange_ = ReadOnlyField("Exchange");
  industry_ = ReadOnlyField("industry");
  EPSRank_ = ReadOnlyField("EPSRank");
  RSRank_ = ReadOnlyField("RSRank");
  stockSummary_ = new QPlainTextEdit(info);
  stockSummary_->setObjectName(QStringLiteral("stockSummary"));
  stockSummary_->setReadOnly(true);
  form->addRow(QStringLiteral("Exchange : "), Exchange_);
  form->addRow(QStringLiteral("Industry : "), industry_);
  form->addRow(QStringLiteral("Business Summary : "), stockSummary_);
  form->addRow(QStringLiteral("EPS Rank : "), EPSRank_);
  form->addRow(QStringLiteral("RS Rank : "), RSRank_);
  stockInfo_->addTab(info, QStringLiteral("Information"));
  columns->addWidget(stockInfo_, 1);
  setCentralWidget(central);

  // Both panels give way to a narrow window: a text that does not fit is cut with "…" and shown
  // whole as the panel's tooltip, so the window never grows for it.
  statusTitle_ = new ElidedLabel(this);
  statusTitle_->setObjectName(QStringLiteral("statusPanel1"));
  statusText_ = new ElidedLabel(this);
  statusText_->setObjectName(QStringLiteral("statusPanel2"));
  statusBar()->setObjectName(QStringLiteral("statusBar"));
  // Room for the longest view title and a long symbol, so panel 2 does not jump about.
  statusTitle_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  statusBar()->addWidget(statusTitle_, 0);
  statusTitle_->setFixedWidth(
      statusTitle_->fontMetrics().horizontalAdvance(QStringLiteral("Thirty Day View - WWWWWW ")));
  statusBar()->addWidget(statusText_, 1);

  downloadTimer_ = new DownloadTimer(session_->config, this);
  connect(downloadTimer_, &DownloadTimer::due, this, &MainFrm::ScheduledDownload);
  progress_ = new ProgressWindow(this);
  backtestWindow_ = new BacktestWindow(this);

  connect(IncListBox_, &QComboBox::currentIndexChanged, this, [this](int index) {
    SelectIncList(index);
    // A choice of the user's also comes as activated() just after, in the same event: the list
    // is loaded once.
    listJustSelected_ = true;
    QTimer::singleShot(0, this, [this] { listJustSelected_ = false; });
  });
  // Choosing the entry already shown loads the list again: it may have been edited on disk,
  // or "f" may have loaded another list meanwhile.
  connect(IncListBox_, &QComboBox::activated, this, [this](int index) {
    if (!listJustSelected_) SelectIncList(index);
  });
  connect(HotList_, &QListWidget::currentRowChanged, this, &MainFrm::SelectSymbol);
  connect(StockGraph_, &ChartWidget::resized, this, [this](double width, double height) {
    chart::LayOut(session_->chart, width, height);
    ShowView();
  });
}

void MainFrm::StartUp(const StartOptions& options) {
  runs::Session& s = *session_;
  // Opened whatever fails on the way, with each failure said in turn. The stock database is
  // opened for reading only: the information page and the rank scans only look, and a command
  // that writes (company data, EPS data, the RS rank) reopens it for writing when it runs.
  const runs::StartReport report = runs::StartSession(s, {.stockDir = options.stockDir,
                                                          .listDir = options.listDir,
                                                          .samples = options.samplesDir,
                                                          .openStores = true,
                                                          .carryOn = true});
  for (const runs::StartNote& note : report.notes) {
    if (note.kind == runs::StartNote::Kind::kSamplesCopied) {
      dialogs_.message(this, QStringLiteral("Halvard 600"), Q(note.text).trimmed(),
                       Dialogs::Icon::kInformation);
    } else {
      Refuse(Q(note.text));
    }
  }
  if (!report.indexLoaded) {
    dialogs_.message(this, Q(std::string(data::kIndexMissingTitle)),
                     Q(std::string(data::kIndexMissingMessage)), Dialogs::Icon::kCritical);
  }
  downloadTimer_->Start();
  chart::InitChart(s.chart, StockGraph_->height());
  s.chart.rangeBars = true;
  s.chart.openTicks = true;
  s.hotListCursor = 0;
  RefreshIncList();
  SizeFromSettings();
}

void MainFrm::SizeFromSettings() {
  // The stored size is in twips, 1440 to the inch.
  const QScreen* screen = this->screen();
  const double dpi = screen != nullptr ? screen->logicalDotsPerInch() : 96.0;
  resize(static_cast<int>(session_->config.windowWidth * dpi / 1440),
         static_cast<int>(session_->config.windowHeight * dpi / 1440));
}

void MainFrm::showMessage(const QString& symbol, const QString& prefix, const QString& suffix) {
  progress_->showMessage(symbol, prefix, suffix);
}

void MainFrm::ShowView() {
  runs::Session& s = *session_;
  QString problem;
  StockGraph_->Draw([&](chart::Canvas& canvas) {
    try {
      s.ShowView(canvas);
    } catch (const UsageError& e) {
      // A view setting outside 1 to 5 draws nothing; say why where the status goes.
      problem = Q(e.what());
    }
  });
  StockGraph_->ShowNotDownloaded(!s.drawable());
  // A key that only clears the chart leaves the status bar as it was; a failed load has already
  // emptied the status text, so no older symbol's numbers stay beside the new name.
  statusTitle_->setText(Q(s.chart.title));
  statusText_->setText(problem.isEmpty() ? Q(s.statusText) : problem);
}

void MainFrm::ShowLoaded() {
  runs::Session& s = *session_;
  // A stock without a price file leaves the picture of the one before, named as it was.
  if (s.view().barCount == 0) return;
  StockGraph_->Draw([&](chart::Canvas& canvas) { s.DrawLoaded(canvas); });
  StockGraph_->ShowNotDownloaded(false);
  statusTitle_->setText(Q(s.chart.title));
  statusText_->setText(Q(s.statusText));
}

void MainFrm::RefreshIncList() {
  QStringList names;
  Guarded([&] {
    for (const std::string& name : data::ListWatchLists(session_->config.IncFilePath)) {
      names << Q(name);
    }
  });
  {
    const QSignalBlocker block(IncListBox_);
    IncListBox_->clear();
    IncListBox_->addItems(names);
    IncListBox_->setCurrentIndex(names.isEmpty() ? -1 : 0);
  }
  if (!names.isEmpty()) SelectIncList(0);
}

void MainFrm::SelectIncList(int index) {
  if (index < 0) return;
  Guarded([&] { session_->SelectList(IncListBox_->itemText(index).toStdString()); });
  FillHotList();
  ShowView();
}

void MainFrm::FillHotList() {
  const QSignalBlocker block(HotList_);
  HotList_->clear();
  for (const std::string& symbol : session_->symbols) HotList_->addItem(Q(symbol));
  if (HotList_->count() > 0) HotList_->setCurrentRow(0);
}

void MainFrm::SelectSymbol(int row) {
  if (row < 0) return;
  runs::Session& s = *session_;
  if (s.config.StockFilePath.empty()) {
    dialogs_.message(this, QStringLiteral("Error"),
                     QStringLiteral("Please set a default path before using this feature"),
                     Dialogs::Icon::kNone);
    ShowView();
    return;
  }
  const std::string symbol = HotList_->item(row)->text().toStdString();
  Guarded([&] { s.ShowSymbol(symbol); });
  Guarded([&] { ShowInformation(symbol); });
  ShowView();
}

void MainFrm::ShowInformation(const std::string& symbol) {
  const std::optional<runs::StockInfo> info = runs::ReadStockInfo(*session_, symbol);
  if (!info) return;
  EPSRank_->setText(Q(platform::FormatGeneral(info->epsRank)));
  RSRank_->setText(Q(platform::FormatGeneral(info->rsRank)));
  stockSummary_->setPlainText(Q(info->summary));
  industry_->setText(Q(info->industry));
  Exchange_->setText(Q(info->exchange));
  companyName_->setText(info->name.empty() ? QStringLiteral("Company") : Q(info->name));
}

bool MainFrm::RunLong(const std::function<void(platform::Progress&)>& run) {
  return HoldWindowFor([&] { run(*progress_); });
}

bool MainFrm::RunLongAside(const std::function<void(platform::Progress&)>& run,
                           platform::Progress* shown) {
  return HoldWindowFor([&] {
    QueuedProgress steps(shown ? *shown : *progress_);
    RunAside([&] { run(steps); });
  });
}

bool MainFrm::HoldWindowFor(const std::function<void()>& run) {
  if (running_) return false;
  running_ = true;
  downloadTimer_->setPaused(true);
  menuBar()->setEnabled(false);
  centralWidget()->setEnabled(false);
  progress_->Start();
  bool finished = false;
  Guarded([&] {
    run();
    finished = !progress_->Cancelled();
  });
  progress_->hide();
  centralWidget()->setEnabled(true);
  menuBar()->setEnabled(true);
  downloadTimer_->setPaused(false);
  running_ = false;
  if (closeAfterRun_) close();
  return finished && !closeAfterRun_;
}

void MainFrm::Guarded(const std::function<void()>& command) {
  try {
    command();
  } catch (const std::exception& e) {
    Refuse(Q(e.what()));
  }
}

void MainFrm::EndProgram(bool writeSettings) {
  if (writeSettings) Guarded([&] { session_->WriteSettings(); });
  writeOnClose_ = false;
  close();
  QCoreApplication::quit();
}

void MainFrm::closeEvent(QCloseEvent* event) {
  if (running_) {
    // The run is still on the stack below us: stop it first, close when it has returned.
    closeAfterRun_ = true;
    progress_->Cancel();
    event->ignore();
    return;
  }
  if (writeOnClose_) Guarded([&] { session_->WriteSettings(); });
  progress_->close();
  backtestWindow_->close();
  CloseSecondaryWindows();
  event->accept();
}

bool MainFrm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || widget->window() != this) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  // Alt and Ctrl belong to the menus' access keys and shortcuts.
  if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
  const QString text = key->text();
  if (text.size() != 1) return false;
  const QChar c = text.front();
  const bool typed = c.isPrint() || c == u'\r' || c == u'\b' || c == u'\x1b';
  if (!typed) return false;
  if (!running_) KeyCommand(c);
  return true;
}

}  // namespace halvard::gui
