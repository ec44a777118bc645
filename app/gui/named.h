#pragma once
// Every control is made with its object name: the tests and the picture mode find controls by
// those names, and they are the names users of the program's windows know.

#include <QString>
#include <utility>

namespace halvard::gui {

template <class Widget, class... Args>
Widget* Named(const char* name, Args&&... args) {
  auto* widget = new Widget(std::forward<Args>(args)...);
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

}  // namespace halvard::gui
