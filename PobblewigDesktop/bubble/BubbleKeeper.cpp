#include "PobblewigDesktop/bubble/BubbleKeeper.h"

#include <QScreen>

#include <algorithm>

namespace pobblewig {

namespace {

using Kind = Bubble::Kind;

/// What came first after the user's newest message.
QString answerText(const std::vector<ChatMessage>& messages)
{
    const auto question = std::ranges::find(
        messages.rbegin(), messages.rend(), ChatMessage::Role::user, &ChatMessage::role);
    return question.base() == messages.end() ? QString() : question.base()->text;
}

} // namespace

BubbleKeeper::BubbleKeeper(BuddyWindow& buddy, BuddyWindowSystem& system)
    : m_buddy(buddy)
    , m_system(system)
    , m_palette(Theme::palette(Theme::desktopScheme(buddy.palette()), {}))
{
    m_time.setSingleShot(true);
    connect(&m_time, &QTimer::timeout, this, &BubbleKeeper::dismiss);
    buddy.installEventFilter(this);
}

void BubbleKeeper::follow(AppCoordinator& coordinator)
{
    m_coordinator = &coordinator;
    auto& chat = coordinator.chat();
    connect(&chat, &ChatService::activityChanged, this, [this](bool isWorking, bool hasSucceeded) {
        if (hasSucceeded)
            sayAnswer();
        else if (!isWorking)
            sayProblem();
    });
    connect(&chat.problem(), &TurnProblem::changed, this, &BubbleKeeper::forgetProblem);
    connect(&coordinator, &AppCoordinator::stateChanged, this, &BubbleKeeper::sayProposals);
    sayProposals();
}

void BubbleKeeper::setTheme(const Palette& palette)
{
    m_palette = palette;
    if (m_window)
        m_window->setTheme(palette);
}

void BubbleKeeper::say(const Bubble& bubble)
{
    if (m_isChatShown || bubble.text.isEmpty())
        return;
    if (BubbleLogic::leavesMark(bubble.kind))
        setUnseen(true);
    setWaiting(BubbleLogic::withAdded(m_waiting, bubble));
}

std::chrono::milliseconds BubbleKeeper::sayGoodbye()
{
    if (!m_buddy.isVisible())
        return {};
    m_isChatShown = false;
    say({ Kind::farewell, tr("See you.") });
    return *BubbleLogic::duration(Kind::farewell);
}

void BubbleKeeper::setChatShown(bool isShown)
{
    m_isChatShown = isShown;
    if (!isShown)
        return;
    setUnseen(false);
    setWaiting({});
}

bool BubbleKeeper::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
        // Once the buddy itself is through with it.
        QMetaObject::invokeMethod(this, &BubbleKeeper::showFirst, Qt::QueuedConnection);
        break;
    case QEvent::Move:
    case QEvent::Resize:
        showFirst();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void BubbleKeeper::sayAnswer()
{
    say({ Kind::answer, BubbleLogic::firstLine(answerText(m_coordinator->chat().messages())) });
}

void BubbleKeeper::sayProblem()
{
    if (const auto& problem = m_coordinator->chat().problem().current())
        say({ Kind::problem, BubbleLogic::fitted(problem->what) });
}

void BubbleKeeper::forgetProblem()
{
    if (!m_coordinator->chat().problem().current())
        setWaiting(BubbleLogic::without(m_waiting, Kind::problem));
}

void BubbleKeeper::sayProposals()
{
    const auto count = m_coordinator->state().of<ProposalState>().pendingProposals.size();
    const auto before = std::exchange(m_proposals, count);
    if (count > before)
        say({ Kind::proposals, BubbleLogic::waitingInWords(qsizetype(count)) });
    else if (count == 0)
        setWaiting(BubbleLogic::without(m_waiting, Kind::proposals));
}

void BubbleKeeper::setUnseen(bool hasUnseen)
{
    if (std::exchange(m_hasUnseen, hasUnseen) != hasUnseen)
        Q_EMIT unseenChanged();
}

void BubbleKeeper::setWaiting(BubbleLogic::Bubbles waiting)
{
    const auto first = [](const auto& bubbles) {
        return bubbles.empty() ? Bubble() : bubbles.front();
    };
    const auto isNews = first(m_waiting) != first(waiting);
    m_waiting = std::move(waiting);
    if (!isNews)
        return;
    m_time.stop();
    if (m_window)
        m_window->hide();
    showFirst();
}

void BubbleKeeper::dismiss()
{
    auto waiting = m_waiting;
    if (!waiting.empty())
        waiting.erase(waiting.begin());
    setWaiting(std::move(waiting));
}

void BubbleKeeper::showFirst()
{
    if (m_waiting.empty() || !m_buddy.isVisible()) {
        m_time.stop();
        if (m_window)
            m_window->hide();
        return;
    }
    if (!m_window)
        makeWindow();
    m_window->setText(m_waiting.front().text);
    m_window->standBeside(m_buddy.geometry(), m_buddy.screen()->availableGeometry());
    if (m_window->isVisible())
        return;
    m_isHeld = false;
    m_window->show();
    startTime();
}

void BubbleKeeper::makeWindow()
{
    m_window = std::make_unique<BubbleWindow>(m_system);
    m_window->setTheme(m_palette);
    connect(m_window.get(), &BubbleWindow::clicked, this, &BubbleKeeper::clicked);
    connect(m_window.get(), &BubbleWindow::dismissed, this, &BubbleKeeper::dismiss);
    connect(m_window.get(), &BubbleWindow::heldChanged, this, [this](bool isHeld) {
        m_isHeld = isHeld;
        startTime();
    });
}

void BubbleKeeper::startTime()
{
    m_time.stop();
    const auto duration =
        m_waiting.empty() ? std::nullopt : BubbleLogic::duration(m_waiting.front().kind);
    if (duration && !m_isHeld)
        m_time.start(*duration);
}

} // namespace pobblewig
