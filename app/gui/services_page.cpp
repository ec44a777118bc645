#include "services_page.h"

#include <QFormLayout>
#include <QLineEdit>

#include "halvard/error.h"

namespace halvard::gui {

ServicesPage::ServicesPage(settings::ServiceSettings current, Save save, QWidget* parent)
    : QWidget(parent), current_(std::move(current)), save_(std::move(save)) {
  setObjectName(QStringLiteral("picOptions"));
  auto* form = new QFormLayout(this);
  for (const settings::ServiceText& value : settings::ServiceSettingsAsText(current_)) {
    auto* edit = new QLineEdit(QString::fromStdString(value.text), this);
    edit->setObjectName(QStringLiteral("Services/") + QString::fromStdString(value.name));
    edit->setMinimumWidth(320);
    if (settings::IsServiceKey(value.name)) edit->setEchoMode(QLineEdit::PasswordEchoOnEdit);
    form->addRow(QString::fromStdString(value.name), edit);
    fields_.emplace_back(value, edit);
  }
}

std::optional<std::vector<settings::ServiceText>> ServicesPage::Changed(QLineEdit*& bad,
                                                                        QString& why) const {
  std::vector<settings::ServiceText> changed;
  settings::ServiceSettings checked = current_;
  for (const auto& [value, edit] : fields_) {
    const std::string typed = edit->text().toStdString();
    if (typed == value.text) continue;
    try {
      changed.push_back(settings::SetServiceSettingFromText(checked, value.name, typed));
    } catch (const Error& e) {
      bad = edit;
      why = QString::fromStdString(e.what());
      return std::nullopt;
    }
  }
  return changed;
}

void ServicesPage::Store(const std::vector<settings::ServiceText>& changed) const {
  if (!changed.empty()) save_(changed);
}

}  // namespace halvard::gui
