#include "PobblewigDesktop/assistant/AssistantWindow.h"

#include "PobblewigDesktop/assistant/CompanionStep.h"
#include "PobblewigDesktop/assistant/DesktopStep.h"
#include "PobblewigDesktop/assistant/DoneStep.h"
#include "PobblewigDesktop/assistant/ModelStep.h"
#include "PobblewigDesktop/assistant/PrivacyStep.h"
#include "PobblewigDesktop/assistant/WelcomeStep.h"
#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace pobblewig {

namespace {

constexpr int gap = 8;

PageEntries entries(AppCoordinator& from, const AssistantWindow::Desktop& desktop)
{
    using enum Icons::Name;
    return {
        { QStringLiteral("welcome"), AssistantWindow::tr("Welcome"), face,
            [desktop] { return std::make_unique<WelcomeStep>(desktop.makeBuddy()); } },
        { QStringLiteral("model"), AssistantWindow::tr("The model"), chip,
            [&from] { return std::make_unique<ModelStep>(from.modelDesk()); } },
        { QStringLiteral("companion"), AssistantWindow::tr("Your companion"), edit,
            [&from] { return std::make_unique<CompanionStep>(from); } },
        { QStringLiteral("privacy"), AssistantWindow::tr("Memory and privacy"), shield,
            [&from] { return std::make_unique<PrivacyStep>(from); } },
        { QStringLiteral("desktop"), AssistantWindow::tr("This desktop"), screen,
            [&from, desktop] { return std::make_unique<DesktopStep>(from, desktop.chatKeys); } },
        { QStringLiteral("done"), AssistantWindow::tr("Done"), check,
            [desktop] { return std::make_unique<DoneStep>(desktop.chatKeys); } },
    };
}

QPushButton* button(const QString& text)
{
    auto* const button = new QPushButton(text);
    button->setAutoDefault(false);
    return button;
}

} // namespace

AssistantWindow::AssistantWindow(AppCoordinator& coordinator, const Desktop& desktop)
    : PageWindow(tr("Welcome to Pobblewig"), entries(coordinator, desktop))
    , m_coordinator(coordinator)
    , m_skip(button(tr("Skip all")))
    , m_back(button(tr("Back")))
    , m_next(button(tr("Continue")))
{
    addButtons();
    connect(m_skip, &QPushButton::clicked, this, &AssistantWindow::finish);
    connect(m_back, &QPushButton::clicked, this, [this] { step(-1); });
    connect(m_next, &QPushButton::clicked, this, &AssistantWindow::goOn);
    connect(this, &PageWindow::pageOpened, this, &AssistantWindow::showButtons);
}

void AssistantWindow::addButtons()
{
    PanelStyle::setRole(*m_skip, QStringLiteral("quiet"));
    PanelStyle::setRole(*m_next, QStringLiteral("primary"));
    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    row->addWidget(m_skip);
    row->addStretch(1);
    row->addWidget(m_back);
    row->addWidget(m_next);
    addBelowPages(*line);
}

void AssistantWindow::showButtons()
{
    const auto isLast = currentPage() == pages().back().id;
    m_back->setDisabled(currentPage() == pages().front().id);
    m_skip->setHidden(isLast);
    // The choice of a model is the page's own primary act.
    PanelStyle::setRole(*m_next, currentPage() == u"model" ? QString() : QStringLiteral("primary"));
    m_next->setText(isLast ? tr("Start talking") : tr("Continue"));
}

void AssistantWindow::goOn()
{
    if (currentPage() != pages().back().id) {
        step(1);
        return;
    }
    finish();
    Q_EMIT linkRequested(QStringLiteral("pobblewig:chat"));
}

void AssistantWindow::finish()
{
    m_coordinator.markOnboardingComplete();
    close();
    // Opened again, it begins anew.
    openPage(pages().front().id);
}

} // namespace pobblewig
