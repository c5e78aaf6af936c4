#pragma once

#include "PobblewigDesktop/pages/CatalogPage.h"

namespace pobblewig {

class WrappedLabel;

/// What the companion is to the user, how it speaks and how it looks.
class CompanionStep : public CatalogPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    explicit CompanionStep(AppCoordinator& coordinator);

    void showState(const PublishedState& state) override;

private:
    WrappedLabel* m_example;
};

} // namespace pobblewig
