#pragma once
// ServicesPage: the "Services" page of the options dialog, one field per value of the [Services]
// section in the section's order, named "Services/<Value Name>". Keys are shown as dots. The
// values are checked as the command line checks them; only the ones the user changed are
// written, so a value another program wrote into the file meanwhile survives.

#include <QWidget>
#include <functional>
#include <vector>

#include "halvard/settings/services.h"

class QLineEdit;

namespace halvard::gui {

class ServicesPage : public QWidget {
  Q_OBJECT

 public:
  using Save = std::function<void(const std::vector<settings::ServiceText>&)>;
  ServicesPage(settings::ServiceSettings current, Save save, QWidget* parent = nullptr);

  // The values changed on the page, each as the file will hold it; on a text that does not
  // convert, nothing, with the field and the message in bad and why.
  std::optional<std::vector<settings::ServiceText>> Changed(QLineEdit*& bad, QString& why) const;
  void Store(const std::vector<settings::ServiceText>& changed) const;

 private:
  settings::ServiceSettings current_;
  Save save_;
  std::vector<std::pair<settings::ServiceText, QLineEdit*>> fields_;
};

}  // namespace halvard::gui
