#pragma once

#include "wire/LLMProvider.h"

#include <deque>
#include <memory>
#include <utility>

namespace pobblewig {

/// A model that answers each request with the next queued reply and keeps what was asked.
class ScriptedProvider : public LLMProvider {
public:
    struct Reply {
        std::vector<LLMStreamEvent> events;
        std::optional<LLMFailure> failure = std::nullopt;
        /// Ends only after `release`; its events come at once.
        bool isHeld = false;
        LLMFinished end = {};
    };

    explicit ScriptedProvider(LLMConfiguration configuration = {})
        : m_configuration(std::move(configuration))
    {
    }

    void enqueue(Reply reply) { m_replies.push_back(std::move(reply)); }
    void enqueue(const QString& text) { enqueue(Reply { { LLMToken { text } } }); }
    void enqueue(LLMFailure failure) { enqueue(Reply { {}, std::move(failure) }); }
    void enqueueHeld(const QString& text) { enqueue({ { LLMToken { text } }, {}, true }); }

    /// Called as each reply ends.
    std::function<void()> onReply = [] {};

    /// Lets all held replies end.
    void release()
    {
        for (const auto& end : std::exchange(m_heldEnds, {}))
            end();
    }

    const std::vector<LLMRequest>& requests() const { return m_requests; }

    /// How many streams their consumers gave up before the end.
    int droppedStreams() const { return *m_droppedStreams; }

    /// What the server tells of its models.
    std::vector<QString> offered;
    Task<std::vector<QString>> models() override { co_return std::vector(offered); }

    const LLMConfiguration& configuration() const override { return m_configuration; }

    LLMStream streamChat(LLMRequest request) override
    {
        m_requests.push_back(std::move(request));
        if (m_replies.empty())
            enqueue(LLMError::invalidResponse(QStringLiteral("no reply was scripted")));
        const auto reply = std::move(m_replies.front());
        m_replies.pop_front();
        LLMStream stream;
        const auto sink = stream.sink();
        for (const auto& event : reply.events)
            sink.push(event);
        sink.setOnDrop([dropped = m_droppedStreams] { ++*dropped; });
        const auto end = [this, sink, failure = reply.failure, finished = reply.end] {
            onReply();
            if (!failure)
                sink.push(finished);
            sink.finish(failure);
        };
        if (reply.isHeld)
            m_heldEnds.push_back(end);
        else
            end();
        return stream;
    }

private:
    LLMConfiguration m_configuration;
    std::deque<Reply> m_replies;
    std::vector<LLMRequest> m_requests;
    std::vector<std::function<void()>> m_heldEnds;
    std::shared_ptr<int> m_droppedStreams = std::make_shared<int>(0);
};

} // namespace pobblewig
