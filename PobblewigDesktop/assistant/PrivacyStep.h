#pragma once

#include "PobblewigDesktop/pages/CatalogPage.h"

namespace pobblewig {

/// What is remembered and seen, in four sentences, with what switches it off.
class PrivacyStep : public CatalogPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    explicit PrivacyStep(AppCoordinator& coordinator);
};

} // namespace pobblewig
