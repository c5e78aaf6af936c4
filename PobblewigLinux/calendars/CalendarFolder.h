#pragma once

#include "PobblewigLinux/calendars/CalendarThread.h"
#include "connections/calendars/CalendarDataProviding.h"
#include "foundation/FileOperations.h"
#include "foundation/Moment.h"

#include <QTimeZone>

#include <memory>

namespace pobblewig {

/// Calendars as files of the iCalendar format (".ics") in a folder and the folders in it, as many
/// programs keep and export them. A folder in it is a calendar of that name.
class CalendarFolder final : public CalendarDataProviding {
public:
    /// More files, and larger ones, are left out.
    static constexpr int mostFiles = 10'000;
    static constexpr qint64 largestFile = 64 * 1024 * 1024;

    explicit CalendarFolder(QString path, Moment moment = {},
        std::shared_ptr<const FileOperations> operations = std::make_shared<FileOperations>());

    PermissionState authorizationStatus(CalendarEntity) const override;
    Task<> requestAccess(CalendarEntity) override { co_return; }

    /// A file that cannot be read is left out, and its name logged. Fails without the folder.
    Task<Result<std::vector<CalendarEventDTO>>> fetchEvents(TimePoint from, TimePoint to) override;
    Task<Result<std::vector<ReminderDTO>>> fetchIncompleteReminders() override;

    /// Makes the folder if need be, and in it a file named after the id.
    Task<Result<void>> saveEvent(CalendarEventDTO event) override;
    Task<Result<void>> saveReminder(ReminderDTO reminder) override;

private:
    template <typename Entry, typename Read>
    Task<Result<std::vector<Entry>>> fetch(Read read);
    Task<Result<void>> save(QString id, QString calendarName, QByteArray text);

    QString m_path;
    Moment m_moment;
    CalendarThread m_thread;
    std::shared_ptr<const FileOperations> m_operations;
};

} // namespace pobblewig
