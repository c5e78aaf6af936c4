#include "PobblewigDesktop/chat/ConversationFeed.h"

#include "PobblewigDesktop/chat/ConversationModel.h"

#include <algorithm>
#include <utility>

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

void ConversationFeed::setCards(ProposalCards cards)
{
    if (std::exchange(m_cards, cards) != cards)
        refresh();
}

void ConversationFeed::turnAnswer(const QUuid& message, int step)
{
    const auto number = m_model.rowOf(message);
    if (!number)
        return;
    const auto& row = m_model.row(*number);
    m_answers[message] = row.answer + std::size_t(step);
    const auto& messages = m_chat.messages();
    const auto place = std::ranges::find(messages, message, &ChatMessage::id);
    show(size_t(place - messages.begin()));
}

void ConversationFeed::show(size_t first)
{
    const auto& messages = m_chat.messages();
    first = ConversationLogic::firstToShow(messages, first);
    const auto above = first > 0 ? m_model.rowOf(messages[first - 1].id) : std::nullopt;
    // Without the row above, nothing is known of what is shown.
    if (!above)
        first = 0;
    auto rows = ConversationLogic::rows(messages, m_clock(), m_calendar, m_cards, first);
    if (const auto& revised = m_chat.replyInRevision()) {
        m_answers.erase(*revised);
        std::erase_if(rows, [&](const auto& row) { return row.id == *revised; });
    }
    for (auto& row : rows) {
        row.isUnanswered = m_chat.isUnanswered(row.id);
        if (const auto chosen = m_answers.find(row.id); chosen != m_answers.end())
            row = ConversationLogic::withAnswer(std::move(row), chosen->second);
    }
    m_model.setRows(std::move(rows), above ? *above + 1 : 0);
    Q_EMIT textsChanged();
}

void ConversationFeed::followTurn()
{
    if (m_chat.isStreaming()) {
        m_model.setReply(ConversationRow { .kind = ConversationRow::Kind::preview });
        return;
    }
    m_model.setReply(std::nullopt);
    Q_EMIT textsChanged();
}

void ConversationFeed::showPreview()
{
    // As it will stand in the finished message.
    if (m_chat.isStreaming())
        m_model.setReplyText(QStringView(m_chat.streamingPreview()).trimmed());
}

} // namespace pobblewig
