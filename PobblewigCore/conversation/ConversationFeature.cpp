#include "conversation/ConversationFeature.h"

namespace pobblewig {

namespace {

QString label(const LLMConfiguration& model)
{
    if (model.modelID == model.providerName)
        return model.modelID;
    return QStringLiteral("%1 (%2)").arg(model.modelID, model.providerName);
}

} // namespace

ConversationFeature::ConversationFeature(const Stores& stores, const Moment& moment,
    LibrarianFeature& librarian, ChatService::Surroundings surroundings)
    : m_settings(stores.settings)
    , m_memory(stores.memory)
    , m_history(stores.history)
    , m_moment(moment)
    , m_models(surroundings.models)
    , m_readingAlong(librarian.readingAlong())
    , m_rollover(librarian.rollover())
    , m_chat(stores, moment, std::move(surroundings))
    , m_sessionEnd({ .memory = m_memory,
          .moment = moment,
          .chat = m_chat,
          .readingAlong = m_readingAlong,
          .rollover = m_rollover,
          .changed = [this] { changed(); } })
{
    m_chat.onTurnComplete = [this] { return afterChatTurn(); };
    m_chat.onTakingBack = [this](const auto& message) { m_readingAlong.passBackTo(message); };
    QObject::connect(&m_chat, &ChatService::messagesChanged, &m_chat, [this] { readInTime(); });
}

void ConversationFeature::start()
{
    m_chat.reload();
    spawn(findModelLabel());
}

Task<> ConversationFeature::tick()
{
    keepAsChosen();
    return m_sessionEnd.endIfDue();
}

void ConversationFeature::publish(PublishedState& state) const
{
    state.set(ConversationState {
        .modelLabel = m_modelLabel,
        .hasModel = m_hasModel,
        .isClosingSession = m_sessionEnd.isUnderWay(),
    });
}

Task<> ConversationFeature::afterChatTurn()
{
    m_memory.sessions.recordTurn(m_moment.now());
    // The conversation does not wait for the librarian.
    spawn(remember());
    onTurnEnded();
    co_await findModelLabel();
}

Task<> ConversationFeature::remember()
{
    co_await m_readingAlong.afterChatTurn();
    changed();
}

void ConversationFeature::keepAsChosen()
{
    const auto keeping = m_settings.settings().keepConversations;
    if (m_history.sweep(keeping, m_moment.now()))
        m_chat.reload();
    if (std::exchange(m_keeping, keeping) != keeping)
        m_rollover.sweepArchives();
}

void ConversationFeature::readInTime()
{
    if (m_readingAlong.isPressing())
        spawn(readUnread());
}

Task<> ConversationFeature::readUnread()
{
    co_await m_readingAlong.extractPendingTurns();
    changed();
}

Task<> ConversationFeature::findModelLabel()
{
    const auto provider = co_await m_models.makeProvider(ModelUse::main);
    m_hasModel = provider != nullptr;
    m_modelLabel =
        provider ? label(provider->configuration()) : QStringLiteral("no model configured");
    changed();
}

} // namespace pobblewig
