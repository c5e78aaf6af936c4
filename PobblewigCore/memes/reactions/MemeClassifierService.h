#pragma once

#include "foundation/Task.h"
#include "memes/MemeLibrary.h"
#include "memes/reactions/MemeReaction.h"
#include "memory/history/ChatMessage.h"
#include "memory/librarian/LibrarianModel.h"
#include "settings/CompanionPersona.h"

namespace pobblewig {

/// Judges with a cheap model which emotion an exchange has, and chooses a meme for it. Never
/// disturbs the chat: whatever fails is only told as the last outcome.
///
/// Lives on the main thread, as long as the process.
class MemeClassifierService {
public:
    /// In seconds, from the moment a meme was chosen.
    static constexpr double defaultCooldown = 4.5;
    static constexpr double defaultMinConfidence = 0.4;

    struct Parts {
        MemeLibrary& library;
        UsageCounter& usage;
        ModelProviding& models;
        std::function<bool()> isEnabled;
        std::function<CompanionPersona()> persona;
        /// Gives a number from 0 to below 1.
        std::function<double()> random;
        double cooldown = defaultCooldown;
        double minConfidence = defaultMinConfidence;
    };

    explicit MemeClassifierService(Parts parts);

    /// Chooses a meme for the exchange, or nothing. A reply is taken up once only, whatever comes
    /// of it. Each outcome is recorded.
    Task<std::optional<MemeReaction>> reactToExchange(
        ChatMessage user, ChatMessage assistant, TimePoint now);

    /// The log gets another text if one is given.
    void recordOutcome(
        const QString& text, TimePoint at, const std::optional<QString>& loggable = std::nullopt);

    const std::optional<QString>& lastOutcome() const { return m_lastOutcome; }
    const std::optional<TimePoint>& lastOutcomeAt() const { return m_lastOutcomeAt; }
    const std::optional<QString>& lastError() const { return m_lastError; }
    const std::optional<TimePoint>& lastShownAt() const { return m_lastShownAt; }

private:
    /// What the model judged.
    struct Judgment {
        MemeEmotion emotion = MemeEmotion::amused;
        double confidence = 0;
    };

    /// Why there is no reaction.
    struct Refusal {
        QString outcome;
        /// What the log may tell of it; the outcome if absent.
        std::optional<QString> loggable = {};
    };

    static tl::unexpected<Refusal> refused(const QString& outcome);
    static std::optional<Judgment> parseReaction(const QString& text);
    std::optional<Refusal> reasonAgainst(const ChatMessage& assistant, TimePoint now);
    Task<tl::expected<Judgment, Refusal>> judge(ChatMessage user, ChatMessage assistant);
    tl::expected<MemeReaction, Refusal> choose(const Judgment& judgment) const;

    Parts m;
    LibrarianModel m_model;
    Lifeline m_life;
    std::optional<TimePoint> m_lastShownAt;
    std::optional<QString> m_lastShownMemeID;
    std::optional<QUuid> m_lastClassifiedAssistantID;
    std::optional<QString> m_lastError;
    std::optional<QString> m_lastOutcome;
    std::optional<TimePoint> m_lastOutcomeAt;
};

} // namespace pobblewig
