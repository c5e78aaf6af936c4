#include "PobblewigDesktop/chat/ConversationBanners.h"

#include "PobblewigDesktop/controls/Banner.h"
#include "conversation/ProblemTexts.h"

#include <QBoxLayout>

namespace pobblewig {

using Action = ChatProblem::Action;

namespace {

QString unfinishedInWords(const ChatMessage& reply)
{
    return reply.isStopped() ? ConversationBanners::tr("You stopped the reply.")
                             : ConversationBanners::tr("The reply was cut off.");
}

} // namespace

ConversationBanners::ConversationBanners(ChatService& chat, Clock clock, QWidget& panel)
    : QObject(&panel)
    , m_chat(chat)
    , m_clock(std::move(clock))
    , m_notice(new Banner(Banner::Kind::notice, tr("Notice"), {}, &panel))
    , m_hint(new Banner(Banner::Kind::notice, tr("Hint"), {}, &panel))
    , m_error(new Banner(Banner::Kind::error, tr("Error"), tr("Retry"), &panel))
    , m_cutOff(new Banner(Banner::Kind::notice, tr("Cut off"), {}, &panel))
{
    m_eachSecond.setInterval(std::chrono::seconds(1));
    connect(&m_eachSecond, &QTimer::timeout, this, &ConversationBanners::countDown);
    connect(&chat.problem(), &TurnProblem::changed, this, &ConversationBanners::showProblem);
    connect(&chat, &ChatService::activityChanged, this, &ConversationBanners::noteActivity);
    connect(&chat, &ChatService::messagesChanged, this, &ConversationBanners::showAction);
    connect(&chat, &ChatService::noticeChanged, this, &ConversationBanners::showHint);
    connect(m_error, &Banner::actionTriggered, this, &ConversationBanners::remedy);
    connect(m_error, &Banner::chosen, &chat, &ChatService::retryWith);
    connect(m_cutOff, &Banner::actionTriggered, &chat, &ChatService::continueReply);
    showProblem();
    showHint();
}

void ConversationBanners::addTo(QBoxLayout& column) const
{
    for (auto* const banner : { m_notice, m_hint, m_error, m_cutOff })
        column.addWidget(banner);
}

void ConversationBanners::setTheme(const Palette& palette)
{
    for (auto* const banner : { m_notice, m_hint, m_error, m_cutOff })
        banner->setTheme(palette);
}

void ConversationBanners::setNotice(const QString& text)
{
    m_notice->setText(text);
}

void ConversationBanners::setNewSessionEnabled(bool isEnabled)
{
    m_isNewSessionEnabled = isEnabled;
    showAction();
}

void ConversationBanners::noteTyping()
{
    m_hasTyped = true;
}

void ConversationBanners::showProblem()
{
    const auto problem = m_chat.problem().current().value_or(ChatProblem());
    m_hasTyped = false;
    m_error->setDetails(problem.details);
    m_error->setChoices(problem.models);
    showAdvice();
    showAction();
    m_error->setText(problem.what);
    if (problem.retryAt)
        m_eachSecond.start();
    else
        m_eachSecond.stop();
}

void ConversationBanners::showAdvice()
{
    const auto problem = m_chat.problem().current().value_or(ChatProblem());
    m_error->setAdvice(problem.retryAt ? ProblemTexts::waitAdvice(
                           ProblemLogic::secondsLeft(problem, m_clock()), retriesByItself())
                                       : problem.advice);
}

void ConversationBanners::showAction()
{
    showCutOff();
    const auto& problem = m_chat.problem().current();
    switch (problem ? problem->action : Action::none) {
    case Action::none:
        m_error->setAction({}, Icons::Name::retry);
        break;
    case Action::retry:
        m_error->setAction(m_chat.canContinue() ? QString() : tr("Retry"), Icons::Name::retry);
        m_error->setActionEnabled(m_chat.canRetry());
        break;
    case Action::newSession:
        m_error->setAction(tr("New session"), Icons::Name::newSession);
        m_error->setActionEnabled(m_isNewSessionEnabled);
        break;
    case Action::chooseModel:
        m_error->setAction(tr("Choose a model"), Icons::Name::chevronDown);
        m_error->setActionEnabled(m_chat.canRetry());
        break;
    case Action::setUp:
        m_error->setAction(tr("How to set it up"), Icons::Name::chevronDown);
        m_error->setActionEnabled(true);
        break;
    }
}

void ConversationBanners::showCutOff()
{
    m_cutOff->setText(
        m_chat.canContinue() ? unfinishedInWords(m_chat.messages().back()) : QString());
    m_cutOff->setAction(tr("Continue"), Icons::Name::chevronDown);
}

void ConversationBanners::showHint()
{
    m_hint->setText(m_chat.notice().value_or(QString()));
}

void ConversationBanners::remedy()
{
    const auto& problem = m_chat.problem().current();
    const auto action = problem ? problem->action : Action::retry;
    m_ownRetries = 0;
    if (action == Action::newSession)
        Q_EMIT newSessionRequested();
    else if (action == Action::setUp)
        m_error->showDetails(true);
    else
        m_chat.retryLast();
}

void ConversationBanners::countDown()
{
    showAdvice();
    const auto& problem = m_chat.problem().current();
    if (!problem || ProblemLogic::secondsLeft(*problem, m_clock()) > 0)
        return;
    m_eachSecond.stop();
    if (!retriesByItself())
        return;
    ++m_ownRetries;
    m_chat.retryLast();
}

bool ConversationBanners::retriesByItself() const
{
    const auto& problem = m_chat.problem();
    return problem.current() && m_chat.canRetry()
        && ProblemLogic::retriesByItself(
            *problem.current(), { problem.since(), m_hasTyped, m_ownRetries });
}

void ConversationBanners::noteActivity(bool working, bool succeeded)
{
    if (succeeded)
        m_ownRetries = 0;
    // Only between two turns is there something to try again.
    if (!working)
        showAdvice();
    showAction();
}

} // namespace pobblewig
