#include "memes/reactions/MemeClassifierService.h"

#include "foundation/Log.h"
#include "foundation/Text.h"
#include "memes/reactions/MemeClassifierSchemas.h"
#include "memes/reactions/MemePrompts.h"
#include "memory/librarian/LibrarianAnswers.h"

#include <QJsonDocument>

namespace pobblewig {

namespace {

constexpr int answerTokens = 200;
constexpr qsizetype mostCharacters = 1'200;
/// An answer that does not say how sure it is should not fire.
constexpr double unstatedConfidence = 0.3;

struct ReactionJSON {
    QString emotion;
    std::optional<double> confidence;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("emotion", &ReactionJSON::emotion),
            optional("confidence", &ReactionJSON::confidence) };
    }
};

QString excerpt(const QString& text)
{
    const auto first = Text::firstCharacters(text, mostCharacters);
    return first.size() < text.size() ? first + u'…' : first;
}

LLMResponseFormat format()
{
    return { LLMResponseFormat::Kind::jsonSchema, QStringLiteral("meme_reaction"),
        MemeClassifierSchemas::reaction() };
}

QString decimals(double number, int count)
{
    return QString::number(number, 'f', count);
}

} // namespace

tl::unexpected<MemeClassifierService::Refusal> MemeClassifierService::refused(
    const QString& outcome)
{
    return tl::unexpected(Refusal { outcome });
}

MemeClassifierService::MemeClassifierService(Parts parts)
    : m(std::move(parts))
    , m_model(m.usage, m.models, { ModelUse::meme, QStringLiteral("meme mode") })
{
}

Task<std::optional<MemeReaction>> MemeClassifierService::reactToExchange(
    ChatMessage user, ChatMessage assistant, TimePoint now)
{
    if (const auto reason = reasonAgainst(assistant, now)) {
        recordOutcome(reason->outcome, now);
        co_return std::nullopt;
    }
    const auto life = m_life.watch();
    const auto judgment = co_await judge(std::move(user), std::move(assistant));
    if (life.expired())
        co_return std::nullopt;
    auto reaction = judgment.and_then([this](const auto& found) { return choose(found); });
    if (!reaction) {
        recordOutcome(reaction.error().outcome, now, reaction.error().loggable);
        co_return std::nullopt;
    }
    m_lastShownAt = now;
    m_lastShownMemeID = reaction->meme.id;
    m_lastError.reset();
    recordOutcome(QStringLiteral("reacted \"%1\" (%2) with %3")
                      .arg(MemeTags::rawValue(reaction->emotion), decimals(reaction->confidence, 2),
                          reaction->meme.name),
        now);
    co_return *std::move(reaction);
}

void MemeClassifierService::recordOutcome(
    const QString& text, TimePoint at, const std::optional<QString>& loggable)
{
    m_lastOutcome = text;
    m_lastOutcomeAt = at;
    Log::line(QStringLiteral("buddy: meme mode: %1").arg(loggable.value_or(text)));
}

auto MemeClassifierService::reasonAgainst(const ChatMessage& assistant, TimePoint now)
    -> std::optional<Refusal>
{
    if (!m.isEnabled())
        return Refusal { QStringLiteral("meme mode is off") };
    if (assistant.role != ChatMessage::Role::assistant
        || assistant.id == m_lastClassifiedAssistantID)
        return Refusal { QStringLiteral("reply already classified") };
    m_lastClassifiedAssistantID = assistant.id;
    if (m_lastShownAt && std::chrono::duration<double>(now - *m_lastShownAt).count() < m.cooldown)
        return Refusal { QStringLiteral("cooldown — a meme just showed") };
    return std::nullopt;
}

auto MemeClassifierService::judge(ChatMessage user, ChatMessage assistant)
    -> Task<tl::expected<Judgment, Refusal>>
{
    // Whatever costs nothing comes first.
    if (const auto provider = co_await m.models.makeProvider(ModelUse::meme); !provider)
        co_return refused(QStringLiteral("no model provider"));
    const auto life = m_life.watch();
    co_await m.library.reloadIfChanged();
    if (life.expired() || m.library.isEmpty())
        co_return refused(QStringLiteral("library is empty"));
    const auto answer = co_await m_model.ask(
        { .prompt = Prompts::memeReaction(excerpt(user.text), excerpt(assistant.text), m.persona()),
            .format = format(),
            .maxTokens = answerTokens },
        {});
    if (!answer)
        co_return refused(QStringLiteral("no model provider"));
    if (!*answer) {
        m_lastError = description(answer->error());
        const auto failed = QStringLiteral("classification failed: %1");
        co_return tl::unexpected(
            Refusal { failed.arg(*m_lastError), failed.arg(pobblewig::loggable(answer->error())) });
    }
    const auto judgment = parseReaction(**answer);
    if (!judgment)
        co_return refused(QStringLiteral("model passed on this one (none/unparseable)"));
    co_return *judgment;
}

auto MemeClassifierService::parseReaction(const QString& text) -> std::optional<Judgment>
{
    const auto object = LibrarianAnswers::extractJSONObject(text);
    if (!object)
        return std::nullopt;
    const auto answer =
        json::decode<ReactionJSON>(QJsonDocument::fromJson(object->toUtf8()).object());
    const auto emotion = answer ? MemeTags::emotion(answer->emotion) : std::nullopt;
    if (!emotion)
        return std::nullopt;
    return Judgment { *emotion,
        std::clamp(answer->confidence.value_or(unstatedConfidence), 0.0, 1.0) };
}

auto MemeClassifierService::choose(const Judgment& judgment) const
    -> tl::expected<MemeReaction, Refusal>
{
    const auto emotion = MemeTags::rawValue(judgment.emotion);
    if (judgment.confidence < m.minConfidence)
        return refused(
            QStringLiteral("\"%1\" at %2 — below the %3 bar")
                .arg(emotion, decimals(judgment.confidence, 2), decimals(m.minConfidence, 1)));
    auto meme = m.library.pick(judgment.emotion, m_lastShownMemeID, m.random);
    if (!meme)
        return refused(QStringLiteral("no meme tagged \"%1\" in the library").arg(emotion));
    return MemeReaction { judgment.emotion, judgment.confidence, *std::move(meme) };
}

} // namespace pobblewig
