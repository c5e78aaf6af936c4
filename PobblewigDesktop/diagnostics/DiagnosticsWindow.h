#pragma once

#include "PobblewigDesktop/diagnostics/DiagnosticsDesk.h"
#include "PobblewigDesktop/pages/PageWindow.h"

namespace pobblewig {

/// "Pobblewig Diagnostics": how the program fares, and a report of it for others.
class DiagnosticsWindow : public PageWindow {
    Q_OBJECT

public:
    explicit DiagnosticsWindow(const DiagnosticsDesk& desk);
};

} // namespace pobblewig
