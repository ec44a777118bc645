#include "screener_window.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "dialogs.h"
#include "halvard/data/price_answer.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"
#include "halvard/screener/criteria_table.h"
#include "halvard/screener/screener.h"
#include "main_frm.h"
#include "progress_window.h"
#include "typed_number.h"

namespace halvard::gui {
namespace {

QString Q(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// "share price" as a caption: "Share price".
QString Caption(std::string_view label) {
  QString caption = Q(label);
  if (!caption.isEmpty()) caption[0] = caption[0].toUpper();
  return caption;
}

QString Symbols(size_t n) {
  return n == 1 ? QStringLiteral("1 symbol") : QStringLiteral("%1 symbols").arg(n);
}

// A number field's text: an empty one is no bound, a number is the bound, anything else is
// refused.
Typed<std::optional<double>> Bound(const QString& text, const QString& what) {
  if (platform::TrimSpaces(text.toStdString()).empty()) return {std::optional<double>(), {}};
  Typed<double> typed = TypedDouble(text, what);
  if (typed.value) return {typed.value, {}};
  return {std::nullopt, std::move(typed.refusal)};
}

QString Joined(const std::vector<std::string>& texts, const QString& between) {
  QStringList list;
  for (const std::string& text : texts) list << Q(text);
  return list.join(between);
}

// The progress window belongs to the main window, which this modal window blocks. Made modal
// itself for the length of a screen, its Cancel button stays in reach.
class ModalWhileRunning {
 public:
  explicit ModalWhileRunning(QWidget& window) : window_(window), was_(window.windowModality()) {
    window_.setWindowModality(Qt::ApplicationModal);
  }
  ~ModalWhileRunning() { window_.setWindowModality(was_); }
  ModalWhileRunning(const ModalWhileRunning&) = delete;
  ModalWhileRunning& operator=(const ModalWhileRunning&) = delete;

 private:
  QWidget& window_;
  Qt::WindowModality was_;
};

}  // namespace

ScreenerWindow::ScreenerWindow(MainFrm& main)
    : QDialog(&main),
      main_(main),
      localData_(
          new QCheckBox(QStringLiteral("&Local data: the price files and the stock database"))),
      hostNote_(new QLabel),
      query_(new QLineEdit),
      run_(new QPushButton(QStringLiteral("&Screen"))),
      found_(new QLabel),
      symbols_(new QListWidget),
      notes_(new QLabel),
      listName_(new QLineEdit),
      save_(new QPushButton(QStringLiteral("Save as &Watch List"))),
      saved_(new QLabel) {
  setObjectName(QStringLiteral("screenerFrm"));
  setWindowTitle(QStringLiteral("Screener"));
  setModal(true);
  // A settings value that does not read is told when a service screen is run; until then the
  // window opens as if no service were set.
  try {
    host_ = Q(
        platform::TrimSpaces(settings::ReadServiceSettings(main_.session().store()).screenerHost));
  } catch (const std::exception&) {
    host_.clear();
  }
  BuildWindow();
  ShowQuery();
  ShowResult();
}

QLineEdit* ScreenerWindow::AddNumberField(const QString& name,
                                          std::optional<double> screener::Bounds::*end,
                                          screener::Bounds screener::ScreenCriteria::*range,
                                          const QString& what) {
  auto* edit = new QLineEdit;
  edit->setObjectName(name);
  edit->setMaximumWidth(80);
  numbers_.push_back({edit, end, range, what});
  const size_t index = numbers_.size() - 1;
  // Typing shows its effect on the query at once; leaving the field takes the number, or
  // refuses what is none.
  connect(edit, &QLineEdit::textChanged, this, &ScreenerWindow::ShowQuery);
  connect(edit, &QLineEdit::editingFinished, this, [this, index] { ReadNumber(numbers_[index]); });
  return edit;
}

void ScreenerWindow::BuildWindow() {
  auto* grid = new QGridLayout;
  int row = 0;
  for (const screener::TextCriterion& t : screener::TextCriteria()) {
    auto* edit = new QLineEdit;
    edit->setObjectName(Q(t.key));
    edit->setPlaceholderText(QStringLiteral("any"));
    connect(edit, &QLineEdit::textChanged, this, [this, field = t.field](const QString& text) {
      criteria_.*field = text.toStdString();
      ShowQuery();
    });
    auto* caption = new QLabel(Caption(t.label));
    caption->setBuddy(edit);
    // The texts a row each across the top, the ranges below them in two columns.
    grid->addWidget(caption, row, 0);
    grid->addWidget(edit, row, 1, 1, 4);
    ++row;
  }
  const auto ranges = screener::RangeCriteria();
  const int half = static_cast<int>((ranges.size() + 1) / 2);
  for (size_t i = 0; i < ranges.size(); ++i) {
    const screener::RangeCriterion& r = ranges[i];
    const int line = row + static_cast<int>(i) % half;
    const int column = static_cast<int>(i) / half == 0 ? 0 : 6;
    const QString key = Q(r.key);
    auto* min = AddNumberField(key + "-min", &screener::Bounds::min, r.field,
                               QStringLiteral("The least ") + Q(r.label));
    auto* max = AddNumberField(key + "-max", &screener::Bounds::max, r.field,
                               QStringLiteral("The most ") + Q(r.label));
    auto* caption = new QLabel(Caption(r.label));
    caption->setBuddy(min);
    auto* unit = new QLabel(Q(r.unit));
    unit->setObjectName(key + "-unit");
    grid->addWidget(caption, line, column);
    grid->addWidget(min, line, column + 1);
    grid->addWidget(new QLabel(QStringLiteral("to")), line, column + 2);
    grid->addWidget(max, line, column + 3);
    grid->addWidget(unit, line, column + 4);
  }
  grid->setColumnMinimumWidth(5, 16);
  grid->setColumnStretch(4, 1);
  grid->setColumnStretch(10, 1);
  auto* criteria = new QGroupBox(QStringLiteral("Criteria (empty: any)"));
  criteria->setLayout(grid);

  localData_->setObjectName(QStringLiteral("localData"));
  localData_->setChecked(host_.isEmpty());
  hostNote_->setObjectName(QStringLiteral("hostNote"));
  hostNote_->setText(host_.isEmpty()
                         ? QStringLiteral("No screener service is set ([Services] Screener Host).")
                         : QStringLiteral("Screener service: ") +
                               Q(data::BaseUrl(host_.toStdString())));
  query_->setObjectName(QStringLiteral("query"));
  query_->setReadOnly(true);
  auto* queryCaption = new QLabel(QStringLiteral("&Query to the service"));
  queryCaption->setBuddy(query_);
  run_->setObjectName(QStringLiteral("runBtn"));
  run_->setAutoDefault(false);
  connect(run_, &QPushButton::clicked, this, &ScreenerWindow::Run);

  found_->setObjectName(QStringLiteral("foundLabel"));
  symbols_->setObjectName(QStringLiteral("resultList"));
  // Symbols are short: many fit on a row. They fill row by row, read as text is read, each in
  // a cell of the same width, so two neighbours never run together into one name.
  symbols_->setFlow(QListView::LeftToRight);
  symbols_->setWrapping(true);
  symbols_->setResizeMode(QListView::Adjust);
  const QFontMetrics metrics(symbols_->font());
  symbols_->setGridSize(
      QSize(metrics.horizontalAdvance(QStringLiteral("WWWWWW")) + 12, metrics.height() + 4));
  symbols_->setMinimumHeight(110);
  notes_->setObjectName(QStringLiteral("notesLabel"));
  notes_->setWordWrap(true);
  notes_->setTextInteractionFlags(Qt::TextSelectableByMouse);

  listName_->setObjectName(QStringLiteral("listName"));
  auto* nameCaption = new QLabel(QStringLiteral("Watch list &name"));
  nameCaption->setBuddy(listName_);
  save_->setObjectName(QStringLiteral("saveBtn"));
  save_->setAutoDefault(false);
  connect(save_, &QPushButton::clicked, this, &ScreenerWindow::SaveList);
  saved_->setObjectName(QStringLiteral("savedLabel"));
  saved_->setWordWrap(true);
  auto* close = new QPushButton(QStringLiteral("&Close"));
  close->setObjectName(QStringLiteral("closeBtn"));
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &ScreenerWindow::reject);

  auto* source = new QHBoxLayout;
  source->addWidget(localData_);
  source->addSpacing(16);
  source->addWidget(hostNote_, 1);
  auto* query = new QHBoxLayout;
  query->addWidget(queryCaption);
  query->addWidget(query_, 1);
  query->addWidget(run_);
  auto* saving = new QHBoxLayout;
  saving->addWidget(nameCaption);
  saving->addWidget(listName_);
  saving->addWidget(save_);
  saving->addWidget(saved_, 1);
  saving->addWidget(close);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(criteria);
  layout->addLayout(source);
  layout->addLayout(query);
  layout->addWidget(found_);
  layout->addWidget(symbols_, 1);
  layout->addWidget(notes_);
  layout->addLayout(saving);
  resize(1120, 680);
}

bool ScreenerWindow::ReadNumber(const NumberField& field) {
  std::optional<double>& end = criteria_.*field.range.*field.end;
  const QString text = field.edit->text();
  const Typed<std::optional<double>> bound = Bound(text, field.what);
  if (bound.value) {
    end = *bound.value;
    ShowQuery();
    return true;
  }
  // The field shows again what the criteria hold, before the message takes the focus.
  {
    const QSignalBlocker block(field.edit);
    field.edit->setText(end ? Q(platform::FormatGeneral(*end)) : QString());
  }
  ShowQuery();
  main_.dialogs().message(this, QStringLiteral("Error"), bound.refusal, Dialogs::Icon::kCritical);
  return false;
}

bool ScreenerWindow::ReadEveryNumber() {
  bool all = true;
  for (const NumberField& field : numbers_) all = ReadNumber(field) && all;
  return all;
}

void ScreenerWindow::ShowQuery() {
  // While a number is typed the query shows it; a text that is no number (yet) shows the
  // criteria as they stand.
  screener::ScreenCriteria shown = criteria_;
  for (const NumberField& field : numbers_) {
    if (const auto bound = Bound(field.edit->text(), field.what).value) {
      shown.*field.range.*field.end = *bound;
    }
  }
  const std::string base = host_.isEmpty() ? std::string() : data::BaseUrl(host_.toStdString());
  query_->setText(Q(base + screener::ScreenQuery(shown, 1)));
  query_->setCursorPosition(0);
}

void ScreenerWindow::Run() {
  if (!ReadEveryNumber()) return;
  const screener::ScreenCriteria c = criteria_;
  const bool local = localData_->isChecked();
  runs::Session& session = main_.session();
  std::optional<screener::ScreenResult> found;
  {
    const ModalWhileRunning modal(main_.progressWindow());
    main_.RunLong([&](platform::Progress& progress) {
      found = local ? screener::ScreenLocally(session, c, progress)
                    : screener::ScreenWithService(settings::ReadServiceSettings(session.store()), c,
                                                  progress);
    });
  }
  // A screen that failed has said why; what the window showed stays.
  if (!found) return;
  result_ = std::move(*found);
  hasResult_ = true;
  saved_->clear();
  ShowResult();
}

void ScreenerWindow::ShowResult() {
  symbols_->clear();
  for (const std::string& symbol : result_.symbols) symbols_->addItem(Q(symbol));
  save_->setEnabled(hasResult_);
  if (!hasResult_) {
    found_->setText(QStringLiteral("Choose the criteria, then Screen."));
    notes_->clear();
    return;
  }
  QString found = Symbols(result_.symbols.size()) +
                  (result_.pages > 0 ? QStringLiteral(" found by the screener service in %1 %2.")
                                           .arg(result_.pages)
                                           .arg(result_.pages == 1 ? "page" : "pages")
                                     : QStringLiteral(" found in the local data."));
  if (result_.cancelled) found = QStringLiteral("Cancelled: ") + found;
  if (result_.pageCapReached) {
    found += QStringLiteral(
                 " The service still sent new symbols on page %1; no further page "
                 "was asked for.")
                 .arg(result_.pages);
  }
  found_->setText(found);
  QStringList notes;
  if (!result_.notApplied.empty()) {
    notes << QStringLiteral("Not applied (the local data cannot answer them): ") +
                 Joined(result_.notApplied, QStringLiteral(", ")) + ".";
  }
  if (!result_.skipped.empty()) {
    notes << QStringLiteral("Skipped: ") + Joined(result_.skipped, QStringLiteral("; ")) + ".";
  }
  notes_->setText(notes.join(u'\n'));
}

void ScreenerWindow::SaveList() {
  if (!hasResult_) return;
  main_.Guarded([&] {
    const auto path =
        screener::SaveScreenList(main_.session(), listName_->text().toStdString(), result_.symbols);
    saved_->setText(
        QStringLiteral("Saved %1 to %2.").arg(Symbols(result_.symbols.size()), Q(path.string())));
  });
}

void ScreenerWindow::reject() {
  if (main_.running()) return;
  QDialog::reject();
}

}  // namespace halvard::gui
