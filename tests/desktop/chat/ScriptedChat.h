#pragma once

#include "conversation/ChatService.h"
#include "support/ScriptedCapturer.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedStores.h"

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
    void think(const QString& text) const { m_sink->push(LLMThought { text }); }

    std::vector<QString> offered;
    Task<std::vector<QString>> models() override { co_return std::vector(offered); }
    void finish(std::optional<LLMFailure> failure = std::nullopt)
    {
        std::exchange(m_sink, std::nullopt)->finish(std::move(failure));
    }

private:
    LLMConfiguration m_configuration { .baseURL = QUrl(QStringLiteral("http://127.0.0.1/v1")) };
    std::optional<LLMStream::Sink> m_sink;
};

/// A whole conversation, in memory unless there is a directory, at a fixed moment.
struct ScriptedChat : ScriptedStores {
    static constexpr TimePoint now = morning;

    explicit ScriptedChat(const std::optional<DataDirectory>& directory = std::nullopt)
        : ScriptedStores(directory)
    {
        models.main = &model;
    }
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

    static SituationSnapshot situation() { return {}; }

    PromptedProvider model;
    ScriptedModels models;
    ScriptedCapturer screen;
    ChatService chat { all, moment,
        { .models = models, .situation = situation, .screen = { &screen, nullptr } } };
};

} // namespace pobblewig
