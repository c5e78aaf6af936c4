#include "PobblewigDesktop/chat/ConversationBanners.h"

#include "PobblewigDesktop/controls/Banner.h"

#include <QBoxLayout>

namespace pobblewig {

namespace {

QString unfinishedInWords(const ChatMessage& reply)
{
    return reply.isStopped() ? ConversationBanners::tr("You stopped the reply.")
                             : ConversationBanners::tr("The reply was cut off.");
}

bool needsNewSession(const ChatService& chat)
{
    const auto& problem = chat.problem().current();
    return problem && problem->action == ChatProblem::Action::newSession;
}

} // namespace

ConversationBanners::ConversationBanners(ChatService& chat, QWidget& panel)
    : QObject(&panel)
    , m_chat(chat)
    , m_notice(new Banner(Banner::Kind::notice, tr("Notice"), {}, &panel))
    , m_hint(new Banner(Banner::Kind::notice, tr("Hint"), {}, &panel))
    , m_error(new Banner(Banner::Kind::error, tr("Error"), tr("Retry"), &panel))
    , m_cutOff(new Banner(Banner::Kind::notice, tr("Cut off"), {}, &panel))
{
    connect(&chat, &ChatService::activityChanged, this, &ConversationBanners::showError);
    connect(&chat, &ChatService::lastErrorChanged, this, &ConversationBanners::showError);
    connect(&chat, &ChatService::messagesChanged, this, &ConversationBanners::showRemedy);
    connect(&chat, &ChatService::noticeChanged, this, &ConversationBanners::showHint);
    connect(m_error, &Banner::actionTriggered, this, &ConversationBanners::remedy);
    connect(m_cutOff, &Banner::actionTriggered, &chat, &ChatService::continueReply);
    showError();
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
    showRemedy();
}

void ConversationBanners::showError()
{
    m_error->setText(m_chat.lastError().value_or(QString()));
    showRemedy();
}

void ConversationBanners::showRemedy()
{
    const auto isCutOff = m_chat.canContinue();
    m_cutOff->setText(isCutOff ? unfinishedInWords(m_chat.messages().back()) : QString());
    m_cutOff->setAction(tr("Continue"), Icons::Name::chevronDown);
    if (needsNewSession(m_chat)) {
        m_error->setAction(tr("New session"), Icons::Name::newSession);
        m_error->setActionEnabled(m_isNewSessionEnabled);
        return;
    }
    m_error->setAction(isCutOff ? QString() : tr("Retry"), Icons::Name::retry);
    m_error->setActionEnabled(m_chat.canRetry());
}

void ConversationBanners::showHint()
{
    m_hint->setText(m_chat.notice().value_or(QString()));
}

void ConversationBanners::remedy()
{
    if (needsNewSession(m_chat))
        Q_EMIT newSessionRequested();
    else
        m_chat.retryLast();
}

} // namespace pobblewig
