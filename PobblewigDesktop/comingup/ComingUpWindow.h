#pragma once

#include "PobblewigDesktop/pages/PageWindow.h"
#include "foundation/Moment.h"
#include "memory/ReferenceMemoryStore.h"

namespace pobblewig {

/// "Coming up": what the user has to expect in the next days.
class ComingUpWindow : public PageWindow {
    Q_OBJECT

public:
    /// `reference` must outlive the window.
    ComingUpWindow(const ReferenceMemoryStore& reference, const Moment& moment);
};

} // namespace pobblewig
