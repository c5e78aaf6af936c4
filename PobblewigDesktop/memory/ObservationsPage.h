#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/memory/EntryPage.h"

class QComboBox;

namespace pobblewig {

/// What happened at a certain time: searched by words, tag and time, and deleted.
class ObservationsPage : public EntryPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    ObservationsPage(AppCoordinator& coordinator, const Calendar& calendar);

private:
    void addFilters();
    void list() override;
    void showSelected() override;
    void showTags();
    ObservationStore::Query query() const;
    bool isNarrowed() const;
    void remove();

    AppCoordinator& m_coordinator;
    Calendar m_calendar;
    QComboBox* m_tag;
    QComboBox* m_time;
    QPushButton* m_delete;
    std::vector<DatedObservation> m_observations;
    std::optional<QUuid> m_shown;
};

} // namespace pobblewig
