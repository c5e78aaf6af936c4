#include "PobblewigLinux/calendars/DataServer.h"

#include "PobblewigLinux/calendars/ErrorPlace.h"
#include "PobblewigLinux/calendars/ICalendarReader.h"
#include "foundation/Log.h"

#include <QCoreApplication>
#include <QSet>

#include <libecal/libecal.h>

#include <algorithm>
#include <memory>

namespace pobblewig {

namespace {

/// A calendar without its server is read as it was last seen, and keeps what is added until it can
/// be sent.
constexpr guint32 notWaiting = -1;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(DataServer)
};

using DataServer::Cancellables;
using DataServer::Kind;
template <typename Object>
struct Unref {
    void operator()(Object* object) const { g_object_unref(object); }
};

template <typename Object>
using Owned = std::unique_ptr<Object, Unref<Object>>;

template <typename Value>
using Result = DataServer::Result<Value>;
using Sources = std::vector<Owned<ESource>>;

const char* extension(Kind kind)
{
    return kind == Kind::events ? E_SOURCE_EXTENSION_CALENDAR : E_SOURCE_EXTENSION_TASK_LIST;
}

ECalClientSourceType clientType(Kind kind)
{
    return kind == Kind::events ? E_CAL_CLIENT_SOURCE_TYPE_EVENTS : E_CAL_CLIENT_SOURCE_TYPE_TASKS;
}

QLatin1String backend(ESource* source, Kind kind)
{
    auto* const part =
        static_cast<ESourceBackend*>(e_source_get_extension(source, extension(kind)));
    return QLatin1String(e_source_backend_get_backend_name(part));
}

/// Whether the user has chosen to see it.
bool isSelected(ESource* source, Kind kind)
{
    return e_source_selectable_get_selected(
        static_cast<ESourceSelectable*>(e_source_get_extension(source, extension(kind))));
}

Sources sources(ESourceRegistry* registry, Kind kind)
{
    Sources sources;
    auto* const list = e_source_registry_list_enabled(registry, extension(kind));
    for (auto* each = list; each; each = each->next)
        sources.emplace_back(static_cast<ESource*>(each->data));
    g_list_free(list);
    return sources;
}

QString nameOf(ESource* source)
{
    return QString::fromUtf8(e_source_get_display_name(source));
}

Owned<ECalClient> open(ESource* source, Kind kind, GCancellable* cancellable, ErrorPlace& error)
{
    auto* const client =
        e_cal_client_connect_sync(source, clientType(kind), notWaiting, cancellable, error);
    return Owned<ECalClient>(E_CAL_CLIENT(client));
}

QByteArray textOf(ICalComponent* component)
{
    const std::unique_ptr<char, decltype(&g_free)> text(
        i_cal_component_as_ical_string(component), g_free);
    return QByteArray(text.get());
}

void addZoneName(ICalParameter* parameter, gpointer names)
{
    static_cast<QSet<QByteArray>*>(names)->insert(i_cal_parameter_get_tzid(parameter));
}

/// The description of a time zone that the calendar knows by that name, or nothing.
QByteArray zoneText(ECalClient* client, const QByteArray& name, GCancellable* cancellable)
{
    ErrorPlace error;
    ICalTimezone* zone = nullptr;
    if (!e_cal_client_get_timezone_sync(client, name.constData(), &zone, cancellable, error))
        return {};
    // The client owns it.
    const Owned<ICalComponent> component(zone ? i_cal_timezone_get_component(zone) : nullptr);
    return component ? textOf(component.get()) : QByteArray();
}

/// What a query finds, as one calendar with its time zones.
std::optional<QByteArray> found(
    ECalClient* client, const char* query, GCancellable* cancellable, ErrorPlace& error)
{
    GSList* components = nullptr;
    if (!e_cal_client_get_object_list_sync(client, query, &components, cancellable, error))
        return std::nullopt;
    QByteArray entries;
    QSet<QByteArray> zones;
    for (auto* each = components; each; each = each->next) {
        auto* const component = static_cast<ICalComponent*>(each->data);
        i_cal_component_foreach_tzid(component, addZoneName, &zones);
        entries += textOf(component);
    }
    e_util_free_nullable_object_slist(components);
    QByteArray text("BEGIN:VCALENDAR\r\nVERSION:2.0\r\n");
    for (const auto& zone : zones)
        text += zoneText(client, zone, cancellable);
    return text + entries + "END:VCALENDAR\r\n";
}

struct CalendarText {
    QString name;
    QByteArray text;
};

/// Has a remote calendar fetch what is new; nobody else may do so at present.
void refresh(ECalClient* client, GCancellable* cancellable)
{
    ErrorPlace ignored;
    if (e_client_check_refresh_supported(E_CLIENT(client)))
        e_client_refresh_sync(E_CLIENT(client), cancellable, ignored);
}

std::optional<QByteArray> textOf(ESource* source, Kind kind, const char* query,
    const Cancellables& cancellables, ErrorPlace& error)
{
    const auto client = open(source, kind, cancellables.call, error);
    if (!client)
        return std::nullopt;
    refresh(client.get(), cancellables.refresh);
    return found(client.get(), query, cancellables.call, error);
}

Result<std::vector<CalendarText>> texts(
    Kind kind, const char* query, const Cancellables& cancellables)
{
    ErrorPlace error;
    const Owned<ESourceRegistry> registry(e_source_registry_new_sync(cancellables.call, error));
    if (!registry)
        return error.failure();
    std::vector<CalendarText> texts;
    auto isAnyMissing = false;
    for (const auto& source : sources(registry.get(), kind)) {
        if (!isSelected(source.get(), kind) || backend(source.get(), kind) == u"weather")
            continue;
        const auto text = textOf(source.get(), kind, query, cancellables, error);
        isAnyMissing = isAnyMissing || !text;
        if (text)
            texts.push_back({ nameOf(source.get()), *text });
        else
            Log::line(QStringLiteral("buddy: a calendar of the desktop's cannot be read"));
    }
    if (texts.empty() && isAnyMissing)
        return error.failure();
    return texts;
}

/// Days are compared in a zone of the service's own choice, so the window is wider than needed. A
/// series is found as a whole.
QByteArray eventQuery(TimePoint from, TimePoint to)
{
    const auto time = [](TimePoint time) {
        return QDateTime::fromMSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC)
            .toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    };
    constexpr auto slack = std::chrono::days(1);
    return QStringLiteral("(or (occur-in-time-range? (make-time \"%1\") (make-time \"%2\"))"
                          " (has-recurrences?))")
        .arg(time(from - slack), time(to + slack))
        .toLatin1();
}

bool isWritable(ESource* source, Kind kind)
{
    const auto name = backend(source, kind);
    return e_source_get_writable(source) && name != u"contacts" && name != u"weather";
}

/// The calendar of that name, or else the user's default one.
Owned<ESource> destination(ESourceRegistry* registry, Kind kind, const QString& name)
{
    for (auto& source : sources(registry, kind)) {
        if (!name.isEmpty() && nameOf(source.get()) == name && isWritable(source.get(), kind))
            return std::move(source);
    }
    return Owned<ESource>(kind == Kind::events ? e_source_registry_ref_default_calendar(registry)
                                               : e_source_registry_ref_default_task_list(registry));
}

Owned<ICalComponent> entryOf(const QByteArray& text, Kind kind)
{
    const Owned<ICalComponent> calendar(i_cal_component_new_from_string(text.constData()));
    const auto wanted = kind == Kind::events ? I_CAL_VEVENT_COMPONENT : I_CAL_VTODO_COMPONENT;
    const Owned<ICalComponent> inner(
        calendar ? i_cal_component_get_first_component(calendar.get(), wanted) : nullptr);
    return Owned<ICalComponent>(inner ? i_cal_component_clone(inner.get()) : nullptr);
}

} // namespace

auto DataServer::events(TimePoint from, TimePoint to, const QTimeZone& local,
    const Cancellables& cancellables) -> Result<std::vector<CalendarEventDTO>>
{
    const auto found = texts(Kind::events, eventQuery(from, to).constData(), cancellables);
    if (!found)
        return tl::unexpected(found.error());
    std::vector<CalendarEventDTO> events;
    for (const auto& [name, text] : *found) {
        auto read = ICalendarReader::events(text, { from, to, local });
        for (auto& event : read.value_or(std::vector<CalendarEventDTO>())) {
            event.calendarName = name;
            events.push_back(std::move(event));
        }
    }
    return events;
}

auto DataServer::reminders(const QTimeZone& local, const Cancellables& cancellables)
    -> Result<std::vector<ReminderDTO>>
{
    const auto found = texts(Kind::reminders, "(not (is-completed?))", cancellables);
    if (!found)
        return tl::unexpected(found.error());
    std::vector<ReminderDTO> reminders;
    for (const auto& [name, text] : *found) {
        auto read = ICalendarReader::reminders(text, local);
        for (auto& reminder : read.value_or(std::vector<ReminderDTO>())) {
            reminder.listName = name;
            reminders.push_back(std::move(reminder));
        }
    }
    return reminders;
}

auto DataServer::save(Kind kind, const QByteArray& text, const QString& calendarName,
    GCancellable* cancellable) -> Result<void>
{
    ErrorPlace error;
    const Owned<ESourceRegistry> registry(e_source_registry_new_sync(cancellable, error));
    if (!registry)
        return error.failure();
    const auto source = destination(registry.get(), kind, calendarName);
    if (!source)
        return tl::unexpected(
            WriteError { Texts::tr("The calendar service has no calendar to write to.") });
    const auto client = open(source.get(), kind, cancellable, error);
    if (!client)
        return error.failure();
    if (e_client_is_readonly(E_CLIENT(client.get())))
        return tl::unexpected(WriteError {
            Texts::tr("The calendar “%1” cannot be changed.").arg(nameOf(source.get())) });
    const auto entry = entryOf(text, kind);
    char* id = nullptr;
    const auto isSaved = entry
        && e_cal_client_create_object_sync(
            client.get(), entry.get(), E_CAL_OPERATION_FLAG_NONE, &id, cancellable, error);
    g_free(id);
    // An earlier attempt has succeeded after all.
    if (isSaved || error.is(E_CAL_CLIENT_ERROR, E_CAL_CLIENT_ERROR_OBJECT_ID_ALREADY_EXISTS))
        return {};
    return error.failure();
}

} // namespace pobblewig
