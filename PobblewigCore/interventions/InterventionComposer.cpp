#include "interventions/InterventionComposer.h"

#include "foundation/Text.h"
#include "memory/MemoryTiers.h"
#include "memory/history/ChatHistoryStore.h"
#include "memory/history/UsageCounter.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

namespace {

constexpr int memoryTokens = 10'000;
constexpr size_t latestMessages = 6;
constexpr qsizetype mostCharacters = 1'200;
constexpr int replyTokens = 1'024;

QString line(const ChatMessage& message)
{
    return QStringLiteral("%1: %2").arg(EnumNames::text(message.role), message.text);
}

QString latest(const std::vector<ChatMessage>& messages)
{
    QStringList lines;
    const auto first = messages.size() - std::min(latestMessages, messages.size());
    for (auto index = first; index < messages.size(); ++index)
        lines << line(messages[index]);
    return lines.join(u'\n');
}

/// Some models put the whole reply into quotation marks, or add a block of code.
QString bare(QString text)
{
    text = text.section(QStringLiteral("```"), 0, 0).trimmed();
    if (text.size() > 2 && text.startsWith(u'"') && text.endsWith(u'"') && text.count(u'"') == 2)
        text = text.sliced(1).chopped(1).trimmed();
    return Text::firstCharacters(text, mostCharacters);
}

} // namespace

InterventionComposer::InterventionComposer(
    const Stores& stores, const Moment& moment, ModelProviding& models)
    : m_settings(stores.settings)
    , m_memory(stores.memory)
    , m_history(stores.history)
    , m_usage(stores.usage)
    , m_moment(moment)
    , m_models(models)
{
}

InterventionPrompts::Background InterventionComposer::background() const
{
    const auto& settings = m_settings.settings();
    return {
        .persona = settings.companionPersona,
        .memory = settings.memoryEnabled
            ? m_memory.notes.residentMemory(memoryTokens, m_moment.now())
            : QString(),
        .conversation = latest(m_history.messages()),
    };
}

auto InterventionComposer::compose(QString prompt) -> Task<Text>
{
    const std::shared_ptr<LLMProvider> provider = co_await m_models.makeProvider(ModelUse::main);
    if (!provider)
        co_return tl::unexpected(QStringLiteral("main model not configured"));
    LLMRequest request {
        .messages = { { .role = LLMMessage::Role::user, .content = std::move(prompt) } },
        .maxTokens = replyTokens * LLMProvider::roomForThinking,
        .temperature = 0.7,
        .longest = std::chrono::minutes(2),
    };
    const auto reply = co_await provider->completeWithUsage(std::move(request));
    if (!reply)
        co_return tl::unexpected(description(reply.error()));
    m_usage.addMainUsage(reply->promptTokens, reply->completionTokens);
    auto text = bare(reply->text);
    if (text.isEmpty() || reply->end.isCutOff)
        co_return tl::unexpected(QStringLiteral("the model gave no whole message"));
    co_return text;
}

} // namespace pobblewig
