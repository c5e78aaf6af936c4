#pragma once

#include "conversation/ChatService.h"
#include "support/BorrowedProvider.h"
#include "support/ScriptedCapturer.h"

#include <QCoreApplication>

namespace pobblewig {

/// A model that says what it is told to say, when it is told to.
class PromptedProvider : public LLMProvider {
public:
    const LLMConfiguration& configuration() const override { return m_configuration; }

    LLMStream streamChat(LLMRequest) override
    {
        LLMStream stream;
        m_sink = stream.sink();
        return stream;
    }

    bool isAsked() const { return m_sink.has_value(); }
    void say(const QString& text) const { m_sink->push(LLMToken { text }); }
    void finish(std::optional<LLMFailure> failure = std::nullopt)
    {
        std::exchange(m_sink, std::nullopt)->finish(std::move(failure));
    }

private:
    LLMConfiguration m_configuration;
    std::optional<LLMStream::Sink> m_sink;
};

/// A whole conversation in memory, at a fixed moment.
struct ScriptedChat {
    static constexpr TimePoint now { std::chrono::seconds(1772352900) };

    ScriptedChat() = default;
    Q_DISABLE_COPY_MOVE(ScriptedChat)
    ~ScriptedChat()
    {
        // A turn outlives its service unless it is told to end.
        chat.cancelStreaming();
        QCoreApplication::processEvents();
    }

    void add(ChatMessage::Role role, const QString& text, TimePoint timestamp = now)
    {
        history.append(
            { .id = QUuid::createUuid(), .role = role, .text = text, .timestamp = timestamp });
        chat.reload();
    }

    void exchange(const QString& question, const QString& answer, TimePoint timestamp = now)
    {
        add(ChatMessage::Role::user, question, timestamp);
        add(ChatMessage::Role::assistant, answer, timestamp);
    }

    PromptedProvider model;
    LLMProvider* main = &model;
    ChatHistoryStore history { std::nullopt };
    UsageCounter usage { std::nullopt };
    ScriptedCapturer screen;
    ChatService chat { history, usage,
        {
            .mainProvider = [this]() { return BorrowedProvider::lent(main); },
            .visionProvider = []() { return BorrowedProvider::lent(nullptr); },
            .mainConfig = []() -> Task<MainModelConfig> { co_return MainModelConfig(); },
            .situationProvider = []() -> Task<SituationSnapshot> { co_return SituationSnapshot(); },
            .screenshots = { &screen,
                []() -> Task<std::set<QString>> { co_return std::set<QString>(); } },
            .clock = [] { return now; },
        } };
};

} // namespace pobblewig
