#include "PobblewigDesktop/ToolWindows.h"

#include "PobblewigDesktop/activity/ActivityWindow.h"
#include "PobblewigDesktop/assistant/AssistantWindow.h"
#include "PobblewigDesktop/buddy/BuddyView.h"
#include "PobblewigDesktop/chat/past/PastConversations.h"
#include "PobblewigDesktop/comingup/ComingUpWindow.h"
#include "PobblewigDesktop/diagnostics/DiagnosticsWindow.h"
#include "PobblewigDesktop/memory/MemoryWindow.h"
#include "PobblewigDesktop/settings/SettingsWindow.h"

#include <QUrl>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using Made = std::unique_ptr<PageWindow>;

std::unique_ptr<QWidget> makeBuddy(AppCoordinator& coordinator)
{
    auto buddy = std::make_unique<BuddyView>();
    const auto showSprite = [view = buddy.get(), &coordinator] {
        const auto& settings = coordinator.state().of<SettingsState>().settings;
        view->setSprite(MascotSprite::chosen(settings.mascot, settings.mascotColorScheme));
    };
    showSprite();
    QObject::connect(&coordinator, &AppCoordinator::stateChanged, buddy.get(), showSprite);
    return buddy;
}

AssistantWindow::Desktop assistantDesktop(AppCoordinator& coordinator, DesktopPresence& presence)
{
    return { [&coordinator] { return makeBuddy(coordinator); },
        [&presence] {
            const auto& hotKey = presence.hotKey();
            return hotKey.isHeld() ? hotKey.keys() : QKeySequence();
        } };
}

struct Kind {
    QStringView name;
    Made (*make)(AppCoordinator& coordinator, DesktopPresence& presence);
};

constexpr std::array kinds {
    Kind { u"welcome",
        [](AppCoordinator& coordinator, DesktopPresence& presence) -> Made {
            return std::make_unique<AssistantWindow>(
                coordinator, assistantDesktop(coordinator, presence));
        } },
    Kind { u"settings",
        [](AppCoordinator& coordinator, DesktopPresence& presence) -> Made {
            return std::make_unique<SettingsWindow>(coordinator,
                GeneralPage::Desktop { presence.autostart(), &presence.hotKey() }, Moment());
        } },
    Kind { u"coming-up",
        [](AppCoordinator& coordinator, DesktopPresence&) -> Made {
            return std::make_unique<ComingUpWindow>(coordinator.memory().reference, Moment());
        } },
    Kind { u"memory",
        [](AppCoordinator& coordinator, DesktopPresence&) -> Made {
            return std::make_unique<MemoryWindow>(coordinator, Calendar::current());
        } },
    Kind { u"activity",
        [](AppCoordinator& coordinator, DesktopPresence&) -> Made {
            return std::make_unique<ActivityWindow>(coordinator);
        } },
    Kind { u"diagnostics",
        [](AppCoordinator& coordinator, DesktopPresence&) -> Made {
            return std::make_unique<DiagnosticsWindow>(
                DiagnosticsDesk(coordinator, JSONFileStore::defaultDirectory()));
        } },
};

QString key(const QString& window, const char* property)
{
    return QStringLiteral("%1/%2").arg(window, QLatin1String(property));
}

} // namespace

ToolWindows::ToolWindows(DesktopPresence& presence, QSettings& desktopSettings)
    : m_presence(presence)
    , m_desktopSettings(desktopSettings)
{
}

ToolWindows::~ToolWindows()
{
    for (const auto& [name, window] : m_windows)
        m_desktopSettings.setValue(key(name, "size"), window->size());
}

void ToolWindows::follow(AppCoordinator& coordinator)
{
    m_coordinator = &coordinator;
    connect(&coordinator, &AppCoordinator::stateChanged, this, &ToolWindows::showState);
}

bool ToolWindows::open(const QString& link)
{
    const QUrl url(link);
    if (!m_coordinator || url.scheme() != u"pobblewig")
        return false;
    const auto name = url.path().section(u'/', 0, 0);
    const auto place = url.path().section(u'/', 1);
    auto* const window = this->window(name);
    if (window) {
        window->setTheme(m_palette);
        window->showState(m_coordinator->state());
        window->openPage(place);
        window->show();
        m_presence.activate(*window);
    } else if (name == u"past") {
        openPast(place);
    }
    return window || name == u"past";
}

void ToolWindows::setTheme(const Palette& palette)
{
    m_palette = palette;
    if (m_past)
        m_past->setTheme(palette);
    for (const auto& [name, window] : m_windows)
        window->setTheme(palette);
}

PageWindow* ToolWindows::window(const QString& name)
{
    const auto* const kind = std::ranges::find(kinds, name, &Kind::name);
    if (kind == kinds.end())
        return nullptr;
    auto& window = m_windows[name];
    if (!window) {
        window = kind->make(*m_coordinator, m_presence);
        prepare(*window, name);
    }
    return window.get();
}

void ToolWindows::prepare(PageWindow& window, const QString& name)
{
    window.resize(m_desktopSettings.value(key(name, "size"), window.size()).toSize());
    window.openPage(m_desktopSettings.value(key(name, "page")).toString());
    connect(&window, &PageWindow::linkRequested, this, [this](const QString& link) {
        if (!open(link))
            Q_EMIT chatRequested();
    });
    connect(&window, &PageWindow::pageOpened, this,
        [this, name](const QString& page) { m_desktopSettings.setValue(key(name, "page"), page); });
}

void ToolWindows::openPast(const QString& conversation)
{
    if (!m_past)
        m_past = std::make_unique<PastConversations>(
            m_coordinator->library(), Calendar::current(), systemNow);
    m_past->setTheme(m_palette);
    m_past->show();
    m_past->reveal(conversation);
    m_presence.activate(*m_past);
}

void ToolWindows::showState()
{
    for (const auto& [name, window] : m_windows) {
        if (window->isVisible())
            window->showState(m_coordinator->state());
    }
}

} // namespace pobblewig
