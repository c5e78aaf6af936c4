#include "PobblewigDesktop/chat/ConversationFeed.h"

#include "PobblewigDesktop/chat/ConversationModel.h"

namespace pobblewig {

namespace {

constexpr std::chrono::milliseconds frame(16);

}

ConversationFeed::ConversationFeed(const ChatService& chat, ConversationModel& model,
    Calendar calendar, Clock clock, QObject* parent)
    : QObject(parent)
    , m_chat(chat)
    , m_model(model)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
    m_nextFrame.setSingleShot(true);
    m_nextFrame.setInterval(frame);
    connect(&m_nextFrame, &QTimer::timeout, this, &ConversationFeed::showPreview);
    connect(&chat, &ChatService::messagesChanged, this, &ConversationFeed::show);
    connect(&chat, &ChatService::isStreamingChanged, this, &ConversationFeed::followTurn);
    connect(&chat, &ChatService::streamingPreviewChanged, this, [this] {
        if (!m_nextFrame.isActive())
            m_nextFrame.start();
    });
    refresh();
    followTurn();
}

void ConversationFeed::refresh()
{
    show(0);
}

void ConversationFeed::show(size_t first)
{
    const auto& messages = m_chat.messages();
    const auto above = first > 0 ? m_model.rowOf(messages[first - 1].id) : std::nullopt;
    // Without the row above, nothing is known of what is shown.
    if (!above)
        first = 0;
    m_model.setRows(
        ConversationLogic::rows(messages, m_clock(), m_calendar, first), above ? *above + 1 : 0);
    Q_EMIT textsChanged();
}

void ConversationFeed::followTurn()
{
    if (m_chat.isStreaming()) {
        m_latestBeforeTurn = latestMessage();
        m_model.setReply(ConversationRow { .kind = ConversationRow::Kind::preview });
        return;
    }
    if (hasReplied())
        m_model.setReply(std::nullopt);
    else
        keepPartialReply();
    Q_EMIT textsChanged();
}

void ConversationFeed::showPreview()
{
    // As it will stand in the finished message.
    if (m_chat.isStreaming())
        m_model.setReplyText(QStringView(m_chat.streamingPreview()).trimmed());
}

void ConversationFeed::keepPartialReply()
{
    if (m_model.rowCount() == 0)
        return;
    auto reply = m_model.row(m_model.rowCount() - 1);
    if (!reply.isReplyInProgress())
        return;
    reply.kind = ConversationRow::Kind::partial;
    m_model.setReply(reply.text.isEmpty() ? std::nullopt : std::optional(reply));
}

bool ConversationFeed::hasReplied() const
{
    const auto& messages = m_chat.messages();
    return !messages.empty() && messages.back().role != ChatMessage::Role::user
        && messages.back().id != m_latestBeforeTurn;
}

QUuid ConversationFeed::latestMessage() const
{
    return m_chat.messages().empty() ? QUuid() : m_chat.messages().back().id;
}

} // namespace pobblewig
