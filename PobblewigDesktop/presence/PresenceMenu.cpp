#include "PobblewigDesktop/presence/PresenceMenu.h"

#include <QActionGroup>

namespace pobblewig {

namespace {

constexpr std::array modes { CoachMode::openEnded, CoachMode::focus, CoachMode::studying,
    CoachMode::relaxing, CoachMode::exercising, CoachMode::doNotDisturb };

} // namespace

PresenceMenu::PresenceMenu(QWidget* parent)
    : QMenu(parent)
    , m_modes(new QActionGroup(this))
{
    addAction(tr("Open chat"), this, &PresenceMenu::chatRequested);
    addAction(tr("Look at my screen"), this, &PresenceMenu::screenRequested);
    addSeparator();
    addModes();
    addPauses();
    addAction(tr("Sleep now"), this, &PresenceMenu::sleepRequested);
    m_putAway = addAction(QString(), this, &PresenceMenu::putAwayRequested);
    addSeparator();
    m_startsWithDesktop = addAction(tr("Start at login"));
    m_startsWithDesktop->setCheckable(true);
    connect(
        m_startsWithDesktop, &QAction::triggered, this, &PresenceMenu::startWithDesktopRequested);
    addSeparator();
    addWindow(tr("Memory…"), QStringLiteral("pobblewig:memory"));
    addWindow(tr("Activity…"), QStringLiteral("pobblewig:activity"));
    addWindow(tr("Set-up assistant…"), QStringLiteral("pobblewig:welcome"));
    addWindow(tr("Settings…"), QStringLiteral("pobblewig:settings"));
    addAction(tr("Quit Pobblewig"), this, &PresenceMenu::quitRequested);
    setState({});
    setCanCallBack(false);
}

void PresenceMenu::setState(const PresenceState& state)
{
    for (auto* const action : m_modes->actions())
        action->setChecked(action->data().value<CoachMode>() == state.mode);
    m_resume->setEnabled(state.isPaused);
}

void PresenceMenu::setStartsWithDesktop(bool startsWithDesktop)
{
    m_startsWithDesktop->setChecked(startsWithDesktop);
}

void PresenceMenu::setCanCallBack(bool canCallBack)
{
    m_putAway->setText(canCallBack
            ? tr("Put the buddy away")
            : tr("Put the buddy away (start Pobblewig again to call it back)"));
}

void PresenceMenu::addModes()
{
    auto* const menu = addMenu(tr("Mode"));
    for (const auto mode : modes) {
        auto* const action =
            menu->addAction(displayName(mode), this, [this, mode] { Q_EMIT modeRequested(mode); });
        action->setCheckable(true);
        action->setData(QVariant::fromValue(mode));
        m_modes->addAction(action);
    }
    menu->addSeparator();
    auto* const forAnHour = menu->addMenu(tr("For 1 hour"));
    for (const auto mode : modes) {
        // It is what every other mode ends in.
        if (mode != CoachMode::openEnded)
            forAnHour->addAction(
                displayName(mode), this, [this, mode] { Q_EMIT temporaryModeRequested(mode, 60); });
    }
}

void PresenceMenu::addPauses()
{
    auto* const menu = addMenu(tr("Pause observation"));
    const auto add = [&](const QString& text, PauseLength length) {
        menu->addAction(text, this, [this, length] { Q_EMIT pauseRequested(length); });
    };
    add(tr("For 30 minutes"), PauseLength::halfAnHour);
    add(tr("Until tomorrow"), PauseLength::untilTomorrow);
    add(tr("Until resumed"), PauseLength::untilResumed);
    menu->addSeparator();
    m_resume = menu->addAction(tr("Resume observation"), this, &PresenceMenu::resumeRequested);
}

void PresenceMenu::addWindow(const QString& text, const QString& link)
{
    addAction(text, this, [this, link] { Q_EMIT linkRequested(link); });
}

} // namespace pobblewig
