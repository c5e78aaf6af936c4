#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/memory/EntryPage.h"

namespace pobblewig {

/// What several notes of different days show, with these notes.
class PatternsPage : public EntryPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    PatternsPage(AppCoordinator& coordinator, const Calendar& calendar);

private:
    void list() override;
    void showSelected() override;
    void remove();

    AppCoordinator& m_coordinator;
    Calendar m_calendar;
    QPushButton* m_delete;
    std::vector<PatternNote> m_patterns;
};

} // namespace pobblewig
