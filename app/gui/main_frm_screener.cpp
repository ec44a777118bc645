// The screener from the Watch Lists menu.

#include "main_frm.h"
#include "screener_window.h"

namespace halvard::gui {

void MainFrm::OpenScreener() {
  ScreenerWindow window(*this);
  window.exec();
  // The screen may have written a list, under a name the list box has not seen yet.
  RefreshIncList();
}

}  // namespace halvard::gui
