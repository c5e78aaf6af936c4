#pragma once

#include "conversation/ChatError.h"
#include "foundation/Task.h"
#include "foundation/Time.h"
#include "memory/ChatHistoryStore.h"
#include "memory/UsageCounter.h"
#include "prompts/SituationSnapshot.h"
#include "wire/LLMProvider.h"
#include "wire/LaneConfigurations.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace pobblewig {

/// Runs one conversational turn, from the submitted text to the assistant's message in the history.
///
/// One turn at a time. What is published here is for display, and changes are announced by signals.
class ChatService : public QObject {
    Q_OBJECT

public:
    /// Asked anew for every use, so that a change of account or environment counts from the next
    /// request on.
    struct Dependencies {
        std::function<Task<std::unique_ptr<LLMProvider>>()> mainProvider;
        std::function<Task<std::unique_ptr<LLMProvider>>()> visionProvider;
        std::function<Task<MainModelConfig>()> mainConfig;
        std::function<Task<SituationSnapshot>()> situationProvider;
    };

    enum class Screenshot { without, with };

    ChatService(ChatHistoryStore& history, UsageCounter& usage, Dependencies dependencies,
        Clock clock, QObject* parent = nullptr);
    ~ChatService() override;

    /// A copy of the history.
    const std::vector<ChatMessage>& messages() const { return m_messages; }

    /// The text of the reply in progress; empty between replies.
    const QString& streamingPreview() const { return m_streamingPreview; }
    bool isStreaming() const { return m_isStreaming; }

    /// What went wrong with the last turn, for the user.
    const std::optional<QString>& lastError() const { return m_lastError; }

    /// What a screenshot shows, while its turn runs.
    const std::optional<QString>& captureIndicator() const { return m_captureIndicator; }

    /// Whether `retryLast` would do something.
    bool canRetry() const;

    /// Does nothing while a turn runs.
    void submit(const QString& text, Screenshot withScreenshot = Screenshot::without);

    /// Runs the last turn again without recording its user message twice.
    void retryLast();
    void cancelStreaming();

    /// Publishes the history anew.
    void reload();

    /// After the reply stands in the history.
    std::function<Task<>()> onTurnComplete;

Q_SIGNALS:
    void messagesChanged();
    void streamingPreviewChanged();
    void isStreamingChanged();
    void lastErrorChanged();
    void captureIndicatorChanged();

    /// (true, false) when a turn starts; (false, true) after a good one; (false, false) after a
    /// failure or a cancellation.
    void activityChanged(bool working, bool succeeded);

private:
    std::vector<ChatMessage> m_messages;
    QString m_streamingPreview;
    bool m_isStreaming = false;
    std::optional<QString> m_lastError;
    std::optional<QString> m_captureIndicator;
};

} // namespace pobblewig
