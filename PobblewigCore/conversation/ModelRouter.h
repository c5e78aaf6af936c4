#pragma once

#include "conversation/ChatError.h"
#include "foundation/Task.h"
#include "memory/history/UsageCounter.h"
#include "wire/ModelProviding.h"

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
};

/// Sends the requests of a turn to a suitable model and reads the replies. Remembers, until the
/// process ends, which lanes do not support tools.
class ModelRouter {
public:
    using Reply = tl::expected<ModelReply, ChatError>;
    using TokenHandler = std::function<void(const QString& token)>;

    struct Request {
        std::vector<LLMMessage> messages;
        int maxTokens = 0;
        std::vector<LLMToolDefinition> tools = {};
        /// Called with each piece of the reply's text.
        TokenHandler onToken = {};
    };

    ModelRouter(UsageCounter& usage, ModelProviding& models);

    /// The lane of a request with or without a picture.
    Task<UsageLane> lane(bool hasImage);
    bool offersNativeTools(UsageLane lane) const { return !m_disabledNativeLanes.contains(lane); }

    /// If a lane rejects tools, asks again without them and stops offering them there. Reports the
    /// error instead if the conversation already contains tool calls.
    Task<Reply> streamRouted(Request request, std::stop_token stop);

    /// Ends the current reply.
    void close();

private:
    struct Route {
        UsageLane lane = UsageLane::main;
        std::unique_ptr<LLMProvider> provider;
    };

    Task<Route> route(bool hasImage);
    Task<Reply> stream(
        LLMStream stream, UsageLane lane, TokenHandler onToken, std::stop_token stop);
    bool rejectsTools(const ChatError& error, const LLMRequest& request) const;
    void disableNativeTools(UsageLane lane, const ChatError& error);
    void addUsage(UsageLane lane, const LLMUsage& usage);

    UsageCounter& m_usage;
    ModelProviding& m_models;
    std::set<UsageLane> m_disabledNativeLanes;
    std::shared_ptr<LLMStream> m_stream;
};

} // namespace pobblewig
