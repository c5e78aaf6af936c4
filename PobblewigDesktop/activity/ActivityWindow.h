#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/pages/PageWindow.h"

namespace pobblewig {

/// "Pobblewig Activity": what was in front, the rules that watch it, and the use of the models.
class ActivityWindow : public PageWindow {
    Q_OBJECT

public:
    /// `coordinator` must outlive the window.
    explicit ActivityWindow(AppCoordinator& coordinator);
};

} // namespace pobblewig
