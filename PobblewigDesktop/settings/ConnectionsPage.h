#pragma once

#include "PobblewigDesktop/pages/CatalogPage.h"
#include "PobblewigDesktop/settings/ConnectionTexts.h"
#include "foundation/Moment.h"

#include <QTimer>

namespace pobblewig {

class CalendarForm;
class SchoolForm;
class WrappedLabel;

/// The services that bring courses, deadlines and events: what each needs, and how it is doing.
class ConnectionsPage : public CatalogPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    ConnectionsPage(AppCoordinator& coordinator, Moment moment);

    void showState(const PublishedState& state) override;

    /// The address and the syncs of the schools are revealed by their keys too.
    void reveal(const QString& key) override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void addCanvas();
    void addClassroom();
    void addCalendars();
    void connectCanvas(const QString& address, const QString& token);
    void showStatuses();

    AppCoordinator& m_coordinator;
    Moment m_moment;
    WrappedLabel* m_keyring;
    SchoolForm* m_canvas;
    SchoolForm* m_classroom;
    CalendarForm* m_calendars;
    /// "5 minutes ago" becomes "6 minutes ago".
    QTimer m_everyMinute;
};

} // namespace pobblewig
