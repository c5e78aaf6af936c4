#include "PobblewigDesktop/settings/ConnectionsPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/pages/LaneTexts.h"
#include "PobblewigDesktop/settings/CalendarForm.h"
#include "PobblewigDesktop/settings/SchoolForm.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

ConnectionStatus status(bool isWanted, bool isSyncing, const SchoolSyncState& sync)
{
    return { .isWanted = isWanted,
        .isSyncing = isSyncing,
        .lastSyncAt = sync.lastSyncAt,
        .error = sync.lastError,
        .found = ConnectionTexts::school(sync.courseCount, sync.deadlineCount) };
}

ConnectionStatus status(const AppSettings& settings, const CalendarState& calendars)
{
    const auto& sync = calendars.sync;
    return { .isWanted = settings.calendarSyncEnabled || settings.remindersSyncEnabled,
        .isSyncing = calendars.isSyncing,
        .lastSyncAt = sync.lastSyncAt,
        .error = calendars.unavailable ? calendars.unavailable : sync.lastError,
        .found = ConnectionTexts::calendars(sync.eventCount, sync.reminderCount) };
}

} // namespace

ConnectionsPage::ConnectionsPage(AppCoordinator& coordinator, Moment moment)
    : CatalogPage(SettingCatalog::title(SettingsPage::connections), coordinator)
    , m_coordinator(coordinator)
    , m_moment(std::move(moment))
    , m_keyring(new WrappedLabel({}))
    , m_canvas(new SchoolForm({ .address = tr("Canvas address"),
          .token = tr("Canvas token"),
          .tokenHint = tr("In Canvas, choose Account → Settings → New access token. The token goes "
                          "into the keyring."),
          .connect = tr("Connect"),
          .sync = tr("Sync now"),
          .disconnect = tr("Disconnect"),
          .state = tr("Canvas state") }))
    , m_classroom(new SchoolForm({ .token = tr("Classroom token"),
          .tokenHint = tr("An access token of your Google account that may read your courses and "
                          "course work. It goes into the keyring."),
          .connect = tr("Connect Classroom"),
          .sync = tr("Sync Classroom now"),
          .disconnect = tr("Disconnect Classroom"),
          .state = tr("Classroom state") }))
    , m_calendars(new CalendarForm)
{
    addExplanation(tr("Courses, deadlines and events go into the memory on this computer."));
    PanelStyle::setRole(*m_keyring, QStringLiteral("problem"));
    m_keyring->setAccessibleName(tr("Keyring"));
    add(*m_keyring);
    addCanvas();
    addClassroom();
    addCalendars();
    connect(&m_everyMinute, &QTimer::timeout, this, &ConnectionsPage::showStatuses);
}

void ConnectionsPage::showState(const PublishedState& state)
{
    CatalogPage::showState(state);
    m_canvas->showAddress(state.of<SettingsState>().settings.canvasBaseURL);
    const auto keyring = m_coordinator.modelDesk().keyring();
    m_keyring->setHidden(keyring != KeychainHelper::State::absent);
    PanelStyle::setText(*m_keyring, tr("The keyring: %1").arg(LaneTexts::keyring(keyring)));
    showStatuses();
}

void ConnectionsPage::reveal(const QString& key)
{
    CatalogPage::reveal(key);
    const auto isCanvas = key == u"canvasBaseURL" || key == u"canvasSyncEnabled";
    if (!isCanvas && key != u"classroomSyncEnabled")
        return;
    auto* const form = isCanvas ? m_canvas : m_classroom;
    scrollTo(*form);
    form->focusField();
}

void ConnectionsPage::showEvent(QShowEvent* event)
{
    CatalogPage::showEvent(event);
    // Only then it matters where the calendars are.
    spawn(m_coordinator.calendars().requestAccess());
    m_everyMinute.start(1min);
}

void ConnectionsPage::hideEvent(QHideEvent* event)
{
    CatalogPage::hideEvent(event);
    m_everyMinute.stop();
}

void ConnectionsPage::addCanvas()
{
    addHeading(tr("Canvas"));
    add(*m_canvas);
    addSettings(settings({ u"canvasSyncIntervalMinutes", u"canvasDeadlineRemindersEnabled",
        u"canvasDeadlineReminderHours" }));
    connect(m_canvas, &SchoolForm::connectRequested, this, &ConnectionsPage::connectCanvas);
    connect(m_canvas, &SchoolForm::syncRequested, this,
        [this] { spawn(m_coordinator.canvas().syncNow()); });
    connect(m_canvas, &SchoolForm::disconnectRequested, this,
        [this] { spawn(m_coordinator.canvas().disconnect()); });
}

void ConnectionsPage::addClassroom()
{
    addHeading(tr("Google Classroom"));
    add(*m_classroom);
    addSettings(settings({ u"classroomSyncIntervalMinutes", u"classroomDeadlineRemindersEnabled",
        u"classroomDeadlineReminderHours" }));
    connect(m_classroom, &SchoolForm::connectRequested, this,
        [this](const QString&, const QString& token) {
            spawn(m_coordinator.classroom().connect(token));
        });
    connect(m_classroom, &SchoolForm::syncRequested, this,
        [this] { spawn(m_coordinator.classroom().syncNow()); });
    connect(m_classroom, &SchoolForm::disconnectRequested, this,
        [this] { spawn(m_coordinator.classroom().disconnect()); });
}

void ConnectionsPage::addCalendars()
{
    addHeading(tr("Calendars"));
    addExplanation(tr("Read-only: upcoming events so the buddy can answer “what's on my "
                      "schedule?”. Nothing is ever written back. Only an event or reminder that "
                      "you confirm is added."));
    addGap();
    addSettings(settings(
        { u"calendarSyncEnabled", u"remindersSyncEnabled", u"calendarSyncIntervalMinutes" }));
    add(*m_calendars);
    connect(m_calendars, &CalendarForm::sourceChosen, this,
        [this](const CalendarSource& source) { m_coordinator.calendars().chooseSource(source); });
    connect(m_calendars, &CalendarForm::syncRequested, this,
        [this] { spawn(m_coordinator.calendars().syncNow()); });
}

void ConnectionsPage::connectCanvas(const QString& address, const QString& token)
{
    if (address.isEmpty())
        m_coordinator.updateSettings([](AppSettings& settings) { settings.canvasBaseURL.clear(); });
    spawn(m_coordinator.canvas().connect(address, token));
}

void ConnectionsPage::showStatuses()
{
    const auto& state = m_coordinator.state();
    const auto& settings = state.of<SettingsState>().settings;
    const auto now = m_moment.now();
    const auto calendar = m_moment.calendar();
    const auto& canvas = state.of<CanvasState>();
    m_canvas->showStatus(
        status(settings.canvasSyncEnabled, canvas.isSyncing, canvas.sync), now, calendar);
    const auto& classroom = state.of<ClassroomState>();
    m_classroom->showStatus(
        status(settings.classroomSyncEnabled, classroom.isSyncing, classroom.sync), now, calendar);
    const auto& calendars = state.of<CalendarState>();
    m_calendars->showSource(calendars.choice);
    m_calendars->showStatus(status(settings, calendars), now, calendar);
}

} // namespace pobblewig
