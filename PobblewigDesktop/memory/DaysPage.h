#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/memory/DayLogic.h"
#include "PobblewigDesktop/memory/EntryPage.h"

namespace pobblewig {

/// Days and weeks, newest first: the summary, what it was made of, and the conversation itself.
class DaysPage : public EntryPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    DaysPage(AppCoordinator& coordinator, const Calendar& calendar);

private:
    void list() override;
    void showSelected() override;
    EntryRow row(const DayEntry& entry) const;
    QString textOf(const DayEntry& entry) const;
    QString title(const DayEntry& entry) const;

    AppCoordinator& m_coordinator;
    Calendar m_calendar;
    QPushButton* m_open;
    std::vector<DayEntry> m_days;
    std::optional<QUuid> m_shown;
};

} // namespace pobblewig
