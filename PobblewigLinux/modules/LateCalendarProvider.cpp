#include "PobblewigLinux/modules/LateCalendarProvider.h"

#include "PobblewigLinux/modules/CalendarsMaking.h"

#include <QCoroSignal>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStandardPaths>

#include <algorithm>

namespace pobblewig {

namespace {

using Kind = CalendarSource::Kind;

const auto providerKey = QStringLiteral("calendars/provider");
const auto folderKey = QStringLiteral("calendars/folder");
const auto serviceWord = QStringLiteral("service");
const auto folderWord = QStringLiteral("folder");

QString defaultFolder()
{
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return documents.filePath(QStringLiteral("Calendars"));
}

QDBusMessage serviceQuestion()
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("ListActivatableNames"));
}

bool hasService(const QStringList& names)
{
    return std::ranges::any_of(names, [](const QString& name) {
        return name.startsWith(QLatin1String("org.gnome.evolution.dataserver.Sources"));
    });
}

} // namespace

LateCalendarProvider::LateCalendarProvider(
    QSettings& settings, QDBusConnection bus, const ModuleLoader& modules)
    : m_settings(settings)
    , m_bus(std::move(bus))
    , m_modules(modules)
{
}

std::optional<CalendarSource> LateCalendarProvider::source() const
{
    auto kind = chosenKind();
    if (!kind && m_hasService)
        kind = *m_hasService ? Kind::service : Kind::folder;
    return kind ? std::optional(CalendarSource { *kind, folder() }) : std::nullopt;
}

QString LateCalendarProvider::sourceName() const
{
    const auto known = source();
    if (!known)
        return {};
    return known->kind == Kind::service ? QStringLiteral("Evolution Data Server") : known->folder;
}

void LateCalendarProvider::chooseSource(const CalendarSource& source)
{
    m_settings.setValue(providerKey, source.kind == Kind::service ? serviceWord : folderWord);
    if (!source.folder.isEmpty())
        m_settings.setValue(folderKey, source.folder);
    m_problem.reset();
}

PermissionState LateCalendarProvider::authorizationStatus(CalendarEntity) const
{
    return PermissionState::granted;
}

Task<> LateCalendarProvider::requestAccess(CalendarEntity)
{
    return findService();
}

auto LateCalendarProvider::fetchEvents(TimePoint from, TimePoint to)
    -> Task<Result<std::vector<CalendarEventDTO>>>
{
    const auto found = co_await calendars();
    if (!found)
        co_return tl::unexpected(found.error());
    if (isNothingThereYet())
        co_return std::vector<CalendarEventDTO>();
    co_return co_await (*found)->fetchEvents(from, to);
}

auto LateCalendarProvider::fetchIncompleteReminders() -> Task<Result<std::vector<ReminderDTO>>>
{
    const auto found = co_await calendars();
    if (!found)
        co_return tl::unexpected(found.error());
    if (isNothingThereYet())
        co_return std::vector<ReminderDTO>();
    co_return co_await (*found)->fetchIncompleteReminders();
}

auto LateCalendarProvider::saveEvent(CalendarEventDTO event) -> Task<Result<void>>
{
    const auto found = co_await calendars();
    if (!found)
        co_return tl::unexpected(found.error());
    co_return co_await (*found)->saveEvent(std::move(event));
}

auto LateCalendarProvider::saveReminder(ReminderDTO reminder) -> Task<Result<void>>
{
    const auto found = co_await calendars();
    if (!found)
        co_return tl::unexpected(found.error());
    co_return co_await (*found)->saveReminder(std::move(reminder));
}

std::optional<Kind> LateCalendarProvider::chosenKind() const
{
    const auto word = m_settings.value(providerKey).toString();
    if (word == serviceWord)
        return Kind::service;
    return word == folderWord ? std::optional(Kind::folder) : std::nullopt;
}

QString LateCalendarProvider::folder() const
{
    return m_settings.value(folderKey, defaultFolder()).toString();
}

bool LateCalendarProvider::isNothingThereYet() const
{
    return source()->kind == Kind::folder && folder() == defaultFolder()
        && !QFileInfo::exists(folder());
}

auto LateCalendarProvider::calendars() -> Task<Result<Calendars>>
{
    co_await findService();
    if (m_problem)
        co_return tl::unexpected(WriteError { *m_problem });
    const auto wanted = *source();
    // A bare member would be moved from.
    if (m_sourceOfCalendars == wanted)
        co_return Result<Calendars>(m_calendars);
    const auto name = wanted.kind == Kind::service ? QStringLiteral("calendars")
                                                   : QStringLiteral("calendarfolder");
    const auto module = m_modules.load<CalendarsMaking>(name);
    if (!module) {
        m_problem = module.error();
        co_return tl::unexpected(WriteError { *m_problem });
    }
    m_calendars = (*module)->makeCalendars(wanted.folder);
    m_sourceOfCalendars = wanted;
    co_return Result<Calendars>(m_calendars);
}

Task<> LateCalendarProvider::findService()
{
    QDBusPendingCallWatcher answer(m_bus.asyncCall(serviceQuestion()));
    if (!answer.isFinished())
        co_await qCoro(&answer, &QDBusPendingCallWatcher::finished);
    const QDBusPendingReply<QStringList> names = answer;
    m_hasService = !names.isError() && hasService(names.value());
    const auto isMissing = source()->kind == Kind::service && !*m_hasService;
    m_problem = isMissing
        ? std::optional(QObject::tr("There is no calendar service on this desktop."))
        : std::nullopt;
}

} // namespace pobblewig
