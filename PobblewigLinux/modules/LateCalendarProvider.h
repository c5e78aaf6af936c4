#pragma once

#include "PobblewigLinux/modules/ModuleLoader.h"
#include "connections/calendars/CalendarDataProviding.h"

#include <QDBusConnection>
#include <QSettings>

#include <memory>

namespace pobblewig {

/// The calendars of this desktop, from a module that is loaded once something is asked of it: those
/// of the calendar service, or files in a folder. Unless the user has chosen, the service is used
/// where there is one.
class LateCalendarProvider final : public CalendarDataProviding {
public:
    /// The choice is kept in the settings, which must outlive this object.
    explicit LateCalendarProvider(QSettings& settings,
        QDBusConnection bus = QDBusConnection::sessionBus(),
        const ModuleLoader& modules = ModuleLoader());

    std::optional<CalendarSource> source() const override;
    void chooseSource(const CalendarSource& source) override;
    QString sourceName() const override;
    std::optional<QString> problem() const override { return m_problem; }

    PermissionState authorizationStatus(CalendarEntity) const override;

    /// Finds out whether there is a service; nobody is asked.
    Task<> requestAccess(CalendarEntity) override;

    /// A default folder that does not exist yet is empty.
    Task<Result<std::vector<CalendarEventDTO>>> fetchEvents(TimePoint from, TimePoint to) override;
    Task<Result<std::vector<ReminderDTO>>> fetchIncompleteReminders() override;
    Task<Result<void>> saveEvent(CalendarEventDTO event) override;
    Task<Result<void>> saveReminder(ReminderDTO reminder) override;

private:
    using Calendars = std::shared_ptr<CalendarDataProviding>;

    std::optional<CalendarSource::Kind> chosenKind() const;
    QString folder() const;
    bool isNothingThereYet() const;
    Task<Result<Calendars>> calendars();
    Task<> findService();

    QSettings& m_settings;
    QDBusConnection m_bus;
    ModuleLoader m_modules;
    /// Known once the bus has been asked.
    std::optional<bool> m_hasService;
    std::optional<QString> m_problem;
    Calendars m_calendars;
    std::optional<CalendarSource> m_sourceOfCalendars;
};

} // namespace pobblewig
