#include "PobblewigLinux/calendars/CalendarFolder.h"

#include "PobblewigLinux/calendars/ICalendarReader.h"
#include "PobblewigLinux/calendars/ICalendarWriter.h"
#include "foundation/Log.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QUrl>

namespace pobblewig {

namespace {

constexpr auto patience = std::chrono::seconds(30);

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(CalendarFolder)
};

template <typename Entry>
struct Reading {
    std::vector<Entry> entries;
    /// The names of the files that could not be read.
    QStringList broken;
};

QStringList calendarFiles(const QString& folder)
{
    QStringList files;
    QDirIterator iterator(
        folder, { QStringLiteral("*.ics") }, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext() && files.size() < CalendarFolder::mostFiles)
        files.append(iterator.next());
    return files;
}

std::optional<QByteArray> textOf(const QString& path)
{
    QFile file(path);
    if (file.size() > CalendarFolder::largestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto text = file.readAll();
    return file.error() == QFile::NoError ? std::optional(text) : std::nullopt;
}

/// The name of the calendar that a file belongs to; empty if it stands in the folder itself.
QString calendarOf(const QString& path, const QDir& folder)
{
    const auto relative = folder.relativeFilePath(path);
    return relative.contains(u'/') ? relative.section(u'/', 0, 0) : QString();
}

void setCalendar(CalendarEventDTO& event, const QString& name)
{
    event.calendarName = name;
}

void setCalendar(ReminderDTO& reminder, const QString& name)
{
    reminder.listName = name;
}

template <typename Entry, typename Read>
Reading<Entry> readAll(const QString& folder, Read read)
{
    Reading<Entry> reading;
    for (const auto& path : calendarFiles(folder)) {
        const auto text = textOf(path);
        auto entries = text ? read(*text) : std::nullopt;
        if (!entries) {
            reading.broken.append(QFileInfo(path).fileName());
            continue;
        }
        const auto calendar = calendarOf(path, folder);
        for (auto& entry : *entries) {
            if (!calendar.isEmpty())
                setCalendar(entry, calendar);
            reading.entries.push_back(std::move(entry));
        }
    }
    return reading;
}

bool isPlainName(const QString& name)
{
    return !name.isEmpty() && !name.startsWith(u'.') && !name.contains(u'/');
}

struct NewFile {
    QString folder;
    QString calendarName;
    QString id;
    QByteArray text;
};

QString pathOf(const NewFile& file)
{
    const QDir root(file.folder);
    const auto calendar = root.filePath(file.calendarName);
    const auto isThere = isPlainName(file.calendarName) && QDir(calendar).exists();
    const QDir place(isThere ? calendar : file.folder);
    const auto name = QString::fromLatin1(QUrl::toPercentEncoding(file.id, {}, "."));
    return place.filePath(name + QStringLiteral(".ics"));
}

tl::expected<void, FileError> write(const NewFile& file, const FileOperations& operations)
{
    const auto path = pathOf(file);
    // An earlier attempt has succeeded after all.
    if (QFileInfo::exists(path))
        return {};
    return writeDurably(path, file.text, operations);
}

auto writing(NewFile file, std::shared_ptr<const FileOperations> operations)
{
    return [file = std::move(file), operations = std::move(operations)] {
        return write(file, *operations);
    };
}

tl::unexpected<WriteError> failure(const QString& text)
{
    return tl::unexpected(WriteError::unsupported(text));
}

QString idOr(const QString& id)
{
    return id.isEmpty() ? QUuid::createUuid().toString(QUuid::WithoutBraces) : id;
}

} // namespace

CalendarFolder::CalendarFolder(
    QString path, Moment moment, std::shared_ptr<const FileOperations> operations)
    : m_path(std::move(path))
    , m_moment(std::move(moment))
    , m_operations(std::move(operations))
{
}

PermissionState CalendarFolder::authorizationStatus(CalendarEntity) const
{
    return PermissionState::granted;
}

auto CalendarFolder::fetchEvents(TimePoint from, TimePoint to)
    -> Task<Result<std::vector<CalendarEventDTO>>>
{
    const ICalendarReader::Window window { from, to, m_moment.calendar().timeZone };
    return fetch<CalendarEventDTO>(
        [window](const QByteArray& text) { return ICalendarReader::events(text, window); });
}

auto CalendarFolder::fetchIncompleteReminders() -> Task<Result<std::vector<ReminderDTO>>>
{
    return fetch<ReminderDTO>([local = m_moment.calendar().timeZone](const QByteArray& text) {
        return ICalendarReader::reminders(text, local);
    });
}

auto CalendarFolder::saveEvent(CalendarEventDTO event) -> Task<Result<void>>
{
    event.id = idOr(event.id);
    auto text = ICalendarWriter::event(event, m_moment.calendar(), m_moment.now());
    return save(event.id, event.calendarName.value_or(QString()), std::move(text));
}

auto CalendarFolder::saveReminder(ReminderDTO reminder) -> Task<Result<void>>
{
    reminder.id = idOr(reminder.id);
    auto text = ICalendarWriter::reminder(reminder, m_moment.calendar(), m_moment.now());
    return save(reminder.id, reminder.listName.value_or(QString()), std::move(text));
}

template <typename Entry, typename Read>
auto CalendarFolder::fetch(Read read) -> Task<Result<std::vector<Entry>>>
{
    const auto path = m_path;
    const auto job = [path, read]() -> std::optional<Reading<Entry>> {
        if (!QFileInfo(path).isDir() || !QFileInfo(path).isReadable())
            return std::nullopt;
        return readAll<Entry>(path, read);
    };
    auto reading = co_await m_thread.outcome(job, patience);
    if (!reading)
        co_return failure(Texts::tr("Reading the folder “%1” takes too long.").arg(path));
    if (!*reading)
        co_return failure(Texts::tr("The folder “%1” cannot be read.").arg(path));
    for (const auto& name : (*reading)->broken)
        Log::line(QStringLiteral("buddy: the calendar file %1 cannot be read").arg(name));
    co_return std::move((*reading)->entries);
}

auto CalendarFolder::save(QString id, QString calendarName, QByteArray text) -> Task<Result<void>>
{
    const auto path = m_path;
    const auto job = writing({ path, calendarName, id, std::move(text) }, m_operations);
    const auto written = co_await m_thread.outcome(job, patience);
    if (!written)
        co_return failure(Texts::tr("Writing to the folder “%1” takes too long.").arg(path));
    if (!*written)
        co_return failure(Texts::tr("The folder “%1” cannot be written to: %2")
                              .arg(path, (*written).error().description()));
    co_return Result<void>();
}

} // namespace pobblewig
