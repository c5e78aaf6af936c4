#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

class ChartPane;

/// How many tokens the models have read and written.
class UsagePage : public FormPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    explicit UsagePage(AppCoordinator& coordinator);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

private:
    AppCoordinator& m_coordinator;
    ChartPane* m_lanes;
    ChartPane* m_days;
};

} // namespace pobblewig
