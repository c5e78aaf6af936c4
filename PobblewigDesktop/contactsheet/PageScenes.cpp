#include "PobblewigDesktop/contactsheet/PageScenes.h"

#include "PobblewigDesktop/activity/ActivityWindow.h"
#include "PobblewigDesktop/assistant/AssistantWindow.h"
#include "PobblewigDesktop/buddy/BuddyView.h"
#include "PobblewigDesktop/comingup/ComingUpWindow.h"
#include "PobblewigDesktop/contactsheet/StagedHome.h"
#include "PobblewigDesktop/diagnostics/DiagnosticsWindow.h"
#include "PobblewigDesktop/memory/MemoryWindow.h"
#include "PobblewigDesktop/settings/SettingsWindow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

std::unique_ptr<PageWindow> assistant(StagedHome& home)
{
    const auto makeBuddy = [] {
        auto buddy = std::make_unique<BuddyView>();
        buddy->setSprite(MascotSprite::forID(u"axolotl"));
        return buddy;
    };
    const auto keys = [] { return QKeySequence(Qt::META | Qt::Key_P); };
    return std::make_unique<AssistantWindow>(
        home.coordinator(), AssistantWindow::Desktop { makeBuddy, keys });
}

std::unique_ptr<PageWindow> settings(StagedHome& home)
{
    return std::make_unique<SettingsWindow>(
        home.coordinator(), GeneralPage::Desktop(), StagedHome::moment());
}

std::unique_ptr<PageWindow> highSettings(StagedHome& home)
{
    auto window = settings(home);
    window->resize(window->width(), 1360);
    return window;
}

std::unique_ptr<PageWindow> narrowSettings(StagedHome& home)
{
    auto window = settings(home);
    window->resize(window->minimumWidth(), window->height());
    return window;
}

std::unique_ptr<PageWindow> memory(StagedHome& home)
{
    return std::make_unique<MemoryWindow>(home.coordinator(), StagedHome::calendar());
}

std::unique_ptr<PageWindow> activity(StagedHome& home)
{
    return std::make_unique<ActivityWindow>(home.coordinator());
}

std::unique_ptr<PageWindow> comingUp(StagedHome& home)
{
    home.addComingUp();
    return std::make_unique<ComingUpWindow>(
        home.coordinator().memory().reference, StagedHome::moment());
}

std::unique_ptr<PageWindow> narrowComingUp(StagedHome& home)
{
    auto window = comingUp(home);
    window->resize(window->minimumSize());
    return window;
}

std::unique_ptr<PageWindow> emptyComingUp(StagedHome& home)
{
    return std::make_unique<ComingUpWindow>(home.coordinator().memory().reference, Moment());
}

std::unique_ptr<PageWindow> diagnostics(StagedHome& home)
{
    return std::make_unique<DiagnosticsWindow>(
        DiagnosticsDesk(home.coordinator(), home.directory()));
}

struct Window {
    const char* name;
    std::unique_ptr<PageWindow> (*make)(StagedHome& home);
    std::vector<const char*> pages;
};

const std::vector<Window>& windows()
{
    static const std::vector<Window> windows {
        { "assistant", assistant,
            { "welcome", "model", "companion", "privacy", "desktop", "done" } },
        { "settings", settings,
            { "general", "companion", "models", "connections", "activity", "privacy",
                "confirmations", "folders", "shortcuts", "about" } },
        { "settings, high", highSettings, { "connections" } },
        { "settings, narrow", narrowSettings, { "connections" } },
        { "memory", memory,
            { "notes", "reference", "days", "observations", "patterns", "prompt", "data" } },
        { "activity", activity, { "day", "week", "rules", "usage" } },
        { "coming up", comingUp, { "days" } },
        { "coming up, narrow", narrowComingUp, { "days" } },
        { "coming up, empty", emptyComingUp, { "days" } },
        { "diagnostics", diagnostics, { "overview", "models", "tools", "files", "keys" } },
    };
    return windows;
}

QImage picture(const Window& kind, const QString& page, ColorScheme scheme)
{
    StagedHome home;
    const auto window = kind.make(home);
    window->setTheme(Theme::palette(scheme, QStringLiteral("coral")));
    window->showState(home.coordinator().state());
    window->openPage(page);
    window->show();
    PanelStage::watch(300ms);
    return window->grab().toImage();
}

} // namespace

std::vector<WindowScene> PageScenes::all()
{
    std::vector<WindowScene> scenes;
    for (const auto& kind : windows()) {
        for (const auto* const name : kind.pages) {
            const auto page = QString::fromLatin1(name);
            scenes.push_back({ QStringLiteral("%1, %2").arg(QLatin1String(kind.name), page),
                [&kind, page](ColorScheme scheme) { return picture(kind, page, scheme); } });
        }
    }
    return scenes;
}

} // namespace pobblewig
