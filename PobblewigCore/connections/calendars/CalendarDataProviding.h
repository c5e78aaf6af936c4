#pragma once

#include "foundation/Task.h"
#include "foundation/Time.h"
#include "screen/PermissionState.h"

#include <QString>

#include <tl/expected.hpp>

#include <optional>
#include <vector>

namespace pobblewig {

enum class CalendarEntity { events, reminders };

struct CalendarEventDTO {
    QString id;
    QString title;
    /// Of an all-day event: when its first day begins, in the user's time zone.
    TimePoint startDate;
    /// Of an all-day event: when its last day begins.
    std::optional<TimePoint> endDate = std::nullopt;
    std::optional<QString> calendarName = std::nullopt;
    std::optional<QString> notes = std::nullopt;
    bool isAllDay = false;

    bool operator==(const CalendarEventDTO&) const = default;
};

struct ReminderDTO {
    QString id;
    QString title;
    std::optional<TimePoint> dueDate = std::nullopt;
    std::optional<QString> listName = std::nullopt;
    std::optional<QString> notes = std::nullopt;
    bool isCompleted = false;
    /// Due on that day, at no particular time.
    bool isAllDay = false;

    bool operator==(const ReminderDTO&) const = default;
};

/// Why a write to the calendars failed or was refused.
struct WriteError {
    /// "{what} access is not granted".
    static WriteError noAccess(const QString& what);
    static WriteError unsupported(QString reason) { return { std::move(reason) }; }

    /// For the user.
    QString description;

    bool operator==(const WriteError&) const = default;
};

/// Where the user wants the calendars to be read from and written to.
struct CalendarSource {
    enum class Kind { service, folder };

    Kind kind = Kind::folder;
    /// Of the kind `folder`: its path.
    QString folder = {};

    bool operator==(const CalendarSource&) const = default;
};

/// The user's calendars and reminders, wherever the platform keeps them.
class CalendarDataProviding {
public:
    template <typename Value>
    using Result = tl::expected<Value, WriteError>;

    virtual ~CalendarDataProviding() = default;

    /// Whether there are calendars at all, whatever access to them is granted.
    virtual bool isAvailable() const { return true; }

    /// The present choice, or nothing as long as it is not known or there is none to make.
    virtual std::optional<CalendarSource> source() const { return std::nullopt; }
    virtual void chooseSource(const CalendarSource&) { }

    /// The name of the present source for the user. Empty as long as it is not known.
    virtual QString sourceName() const { return {}; }

    /// Why the chosen source cannot be used, as far as known, as a sentence for the user.
    virtual std::optional<QString> problem() const { return std::nullopt; }

    /// Does not prompt the user.
    virtual PermissionState authorizationStatus(CalendarEntity entity) const = 0;
    virtual Task<> requestAccess(CalendarEntity entity) = 0;

    /// Every event that overlaps the window, with one entry for each repetition.
    virtual Task<Result<std::vector<CalendarEventDTO>>> fetchEvents(
        TimePoint from, TimePoint to) = 0;
    virtual Task<Result<std::vector<ReminderDTO>>> fetchIncompleteReminders() = 0;

    /// Saves to the calendar with that name, or else to the user's default one. Saving the same id
    /// again adds nothing, so what may have failed can be tried again; without an id each is new.
    virtual Task<Result<void>> saveEvent(CalendarEventDTO event) = 0;
    virtual Task<Result<void>> saveReminder(ReminderDTO reminder) = 0;
};

/// For platforms without calendars: grants nothing, and every request fails for lack of access.
class UnavailableCalendarProvider : public CalendarDataProviding {
public:
    bool isAvailable() const override { return false; }
    PermissionState authorizationStatus(CalendarEntity entity) const override;
    Task<> requestAccess(CalendarEntity entity) override;
    Task<Result<std::vector<CalendarEventDTO>>> fetchEvents(TimePoint from, TimePoint to) override;
    Task<Result<std::vector<ReminderDTO>>> fetchIncompleteReminders() override;
    Task<Result<void>> saveEvent(CalendarEventDTO event) override;
    Task<Result<void>> saveReminder(ReminderDTO reminder) override;
};

} // namespace pobblewig
