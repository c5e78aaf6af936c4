#include "PobblewigLinux/calendars/DataServerCalendars.h"

#include "PobblewigLinux/calendars/DataServer.h"
#include "PobblewigLinux/calendars/ICalendarWriter.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

constexpr auto patience = std::chrono::seconds(30);
constexpr auto patienceWithServers = std::chrono::seconds(10);

using Cancellable = std::shared_ptr<GCancellable>;

Cancellable newCancellable()
{
    return { g_cancellable_new(), g_object_unref };
}

/// Cancels a call that takes too long, or that the end of the program would have to wait for.
class Cancelling {
public:
    Cancelling()
    {
        QTimer::singleShot(patienceWithServers, &m_context, [this] { cancel(m_refresh); });
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, &m_context, [this] { cancelAll(); });
    }
    ~Cancelling() { cancelAll(); }
    Q_DISABLE_COPY_MOVE(Cancelling)

    const Cancellable& call() const { return m_call; }
    const Cancellable& refresh() const { return m_refresh; }

private:
    static void cancel(const Cancellable& cancellable) { g_cancellable_cancel(cancellable.get()); }
    void cancelAll() const
    {
        cancel(m_refresh);
        cancel(m_call);
    }

    Cancellable m_call = newCancellable();
    Cancellable m_refresh = newCancellable();
    QObject m_context;
};

template <typename Value>
using Call = std::function<DataServer::Result<Value>(const DataServer::Cancellables&)>;

template <typename Value>
std::function<DataServer::Result<Value>()> job(Call<Value> call, const Cancelling& cancelling)
{
    return
        [call = std::move(call), until = cancelling.call(), refreshUntil = cancelling.refresh()] {
            return call({ until.get(), refreshUntil.get() });
        };
}

/// What the call returns, on another thread.
template <typename Value>
auto answer(CalendarThread* thread, Call<Value> call) -> Task<DataServer::Result<Value>>
{
    const Cancelling cancelling;
    auto result = co_await thread->outcome(job(std::move(call), cancelling), patience);
    if (result)
        co_return *std::move(result);
    co_return tl::unexpected(WriteError { QCoreApplication::translate(
        "DataServerCalendars", "The calendar service did not answer within 30 seconds.") });
}

QString idOr(const QString& id)
{
    return id.isEmpty() ? QUuid::createUuid().toString(QUuid::WithoutBraces) : id;
}

} // namespace

DataServerCalendars::DataServerCalendars(Moment moment)
    : m_moment(std::move(moment))
{
}

PermissionState DataServerCalendars::authorizationStatus(CalendarEntity) const
{
    return PermissionState::granted;
}

auto DataServerCalendars::fetchEvents(TimePoint from, TimePoint to)
    -> Task<Result<std::vector<CalendarEventDTO>>>
{
    return answer<std::vector<CalendarEventDTO>>(
        &m_thread, [from, to, local = m_moment.calendar().timeZone](const auto& cancellables) {
            return DataServer::events(from, to, local, cancellables);
        });
}

auto DataServerCalendars::fetchIncompleteReminders() -> Task<Result<std::vector<ReminderDTO>>>
{
    return answer<std::vector<ReminderDTO>>(
        &m_thread, [local = m_moment.calendar().timeZone](const auto& cancellables) {
            return DataServer::reminders(local, cancellables);
        });
}

auto DataServerCalendars::saveEvent(CalendarEventDTO event) -> Task<Result<void>>
{
    event.id = idOr(event.id);
    const auto text = ICalendarWriter::event(event, m_moment.calendar(), m_moment.now());
    const auto name = event.calendarName.value_or(QString());
    return answer<void>(&m_thread, [text, name](const auto& cancellables) {
        return DataServer::save(DataServer::Kind::events, text, name, cancellables.call);
    });
}

auto DataServerCalendars::saveReminder(ReminderDTO reminder) -> Task<Result<void>>
{
    reminder.id = idOr(reminder.id);
    const auto text = ICalendarWriter::reminder(reminder, m_moment.calendar(), m_moment.now());
    const auto name = reminder.listName.value_or(QString());
    return answer<void>(&m_thread, [text, name](const auto& cancellables) {
        return DataServer::save(DataServer::Kind::reminders, text, name, cancellables.call);
    });
}

} // namespace pobblewig
