#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/pages/PageWindow.h"

namespace pobblewig {

/// "Pobblewig Memory": all that is remembered, to be read, corrected and deleted.
class MemoryWindow : public PageWindow {
    Q_OBJECT

public:
    /// `coordinator` must outlive the window.
    MemoryWindow(AppCoordinator& coordinator, const Calendar& calendar);
};

} // namespace pobblewig
