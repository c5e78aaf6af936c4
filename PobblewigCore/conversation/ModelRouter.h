#pragma once

#include "conversation/ChatError.h"
#include "conversation/ChatProblem.h"
#include "foundation/Task.h"
#include "memory/history/UsageCounter.h"
#include "wire/ModelProviding.h"

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <stop_token>

namespace pobblewig {

/// The model that serves a request.
enum class UsageLane { main, vision };

struct ModelReply {
    QString text;
    std::vector<LLMToolCall> toolCalls;
    LLMFinished end = {};
};

/// Sends the requests of a turn to a suitable model and reads the replies. Remembers, until the
/// process ends, which lanes do not support tools, and which think and need more room.
class ModelRouter {
public:
    using Reply = tl::expected<ModelReply, ChatError>;
    using TokenHandler = std::function<void(const QString& token)>;

    struct Request {
        std::vector<LLMMessage> messages;
        std::vector<LLMToolDefinition> tools = {};
        /// Called with each piece of the reply's text.
        TokenHandler onToken = {};
        /// Called with each piece of what the model thinks before it answers.
        TokenHandler onThought = {};
        /// Called with the reply's text so far if that turns out to be thought.
        TokenHandler onTakenBack = {};
        /// Called when the wait for a model that is still loading begins.
        std::function<void()> onLoading = {};
    };

    /// A model that is still loading is asked again after each pause, up to 90 times.
    ModelRouter(
        UsageCounter& usage, ModelProviding& models, std::chrono::milliseconds loadingPause);

    /// The lane of a request with or without a picture.
    Task<UsageLane> lane(bool hasImage);

    /// The model that the latest request went to.
    const AskedModel& asked() const { return m_asked; }

    bool offersNativeTools(UsageLane lane) const { return !m_disabledNativeLanes.contains(lane); }

    /// If a lane rejects tools, asks again without them, and stops offering them there if that
    /// succeeds. Reports the error instead if the conversation already contains tool calls. A reply
    /// that ends at its limit before the model has done more than think is asked for again with
    /// more room. A reply of more than 200,000 characters is cut off there.
    Task<Reply> streamRouted(Request request, std::stop_token stop);

    /// Ends the current reply, or the wait for a model that is loading.
    void close();

private:
    struct Route {
        UsageLane lane = UsageLane::main;
        std::shared_ptr<LLMProvider> provider;
        int maxTokens = 0;
    };

    /// A request as it goes to one model.
    struct Attempt {
        Route route;
        LLMRequest asked;
        TokenHandler onToken;
        TokenHandler onThought;
        TokenHandler onTakenBack;
        std::function<void()> onLoading;
    };

    Task<Route> route(bool hasImage);
    void noteAsked(const Route& route);
    Task<Reply> streamOnceLoaded(Attempt attempt, std::stop_token stop);
    Task<> pauseForLoading();
    Task<Reply> streamWithRoom(Attempt attempt, std::stop_token stop);
    Task<Reply> stream(Attempt attempt, std::stop_token stop);
    void giveRoom(LLMRequest& request, const Route& route) const;
    bool rejectsTools(const ChatError& error, const LLMRequest& request) const;
    void disableNativeTools(UsageLane lane, const ChatError& error);
    void addUsage(UsageLane lane, const LLMUsage& usage);

    UsageCounter& m_usage;
    ModelProviding& m_models;
    std::chrono::milliseconds m_loadingPause;
    std::set<UsageLane> m_disabledNativeLanes;
    std::set<UsageLane> m_thinkingLanes;
    std::shared_ptr<LLMStream> m_stream;
    AskedModel m_asked;
};

} // namespace pobblewig
