#pragma once

#include "wire/LLMProvider.h"

#include <deque>
#include <memory>

namespace pobblewig {

/// A model that answers each request with the next queued reply and keeps what was asked.
class ScriptedProvider : public LLMProvider {
public:
    struct Reply {
        std::vector<LLMStreamEvent> events;
        std::optional<LLMFailure> failure = std::nullopt;
        /// Ends only after `release`; its events come at once.
        bool isHeld = false;
    };

    explicit ScriptedProvider(LLMConfiguration configuration = {});

    void enqueue(Reply reply) { m_replies.push_back(std::move(reply)); }
    void enqueue(const QString& text) { enqueue(Reply { { LLMToken { text } } }); }
    void enqueue(LLMFailure failure) { enqueue(Reply { {}, std::move(failure) }); }

    /// Lets all held replies end.
    void release();

    const std::vector<LLMRequest>& requests() const { return m_requests; }

    /// How many streams their consumers gave up before the end.
    int droppedStreams() const { return *m_droppedStreams; }

    const LLMConfiguration& configuration() const override { return m_configuration; }
    LLMStream streamChat(LLMRequest request) override;

private:
    struct Held {
        LLMStream::Sink sink;
        std::optional<LLMFailure> failure;
    };

    LLMConfiguration m_configuration;
    std::deque<Reply> m_replies;
    std::vector<LLMRequest> m_requests;
    std::vector<Held> m_held;
    std::shared_ptr<int> m_droppedStreams = std::make_shared<int>(0);
};

} // namespace pobblewig
