#pragma once

#include "foundation/JSONValue.h"
#include "foundation/Stream.h"
#include "foundation/Task.h"
#include "wire/LLMError.h"
#include "wire/LLMMessage.h"

#include <QString>
#include <QUrl>

#include <tl/expected.hpp>

#include <chrono>
#include <optional>
#include <variant>
#include <vector>

namespace pobblewig {

struct LLMConfiguration {
    /// Used as a label only.
    QString providerName;
    QUrl baseURL;
    QString modelID;
    QString apiKey;
    /// Asks the server to report token usage on the stream.
    bool includeStreamUsage = true;
    /// The request goes to the product's own backend, not straight to a model vendor.
    bool usesCloudAuth = false;
    /// The session of the signed-in user; only for the product's own backend.
    std::optional<QString> sessionToken;
    /// Appended to the base URL, such as "chat/completions".
    QString completionsPath;
    /// The name of the cloud lane.
    std::optional<QString> lane;
};

struct LLMResponseFormat {
    enum class Kind { jsonSchema, text, jsonObject };

    Kind kind = Kind::text;
    /// Used with a `jsonSchema` only.
    QString name = {};
    JSONValue::Object schema = {};
};

struct LLMToken {
    QString text;
};

/// A piece of what the model thinks before it answers.
struct LLMThought {
    QString text;
};

/// All tokens so far were thoughts; the reply begins only now.
struct LLMWasThought { };

struct LLMToolCalls {
    std::vector<LLMToolCall> calls;
};

struct LLMUsage {
    int promptTokens = 0;
    int completionTokens = 0;
};

struct LLMFinished {
    /// The reply ended at its length limit.
    bool isCutOff = false;
    /// The model thought before it answered, which counts towards the limit.
    bool hasThought = false;

    bool operator==(const LLMFinished&) const = default;
};

using LLMStreamEvent =
    std::variant<LLMToken, LLMThought, LLMWasThought, LLMToolCalls, LLMUsage, LLMFinished>;
using LLMStream = Stream<LLMStreamEvent, LLMFailure>;

struct LLMCompletion {
    QString text;
    int promptTokens = 0;
    int completionTokens = 0;
    LLMFinished end = {};
};

/// The messages and parameters of a request to a model.
struct LLMRequest {
    std::vector<LLMMessage> messages;
    int maxTokens = 1024;
    double temperature = 0.7;
    LLMResponseFormat responseFormat = {};
    std::vector<LLMToolDefinition> tools = {};
    /// How long the whole reply may take.
    std::optional<std::chrono::milliseconds> longest = std::nullopt;
    /// Whether the model's thoughts are among the events.
    bool wantsThoughts = false;
};

/// A model behind an endpoint. Holds no state between calls and is cheap to create.
class LLMProvider {
public:
    /// The longest answer that is read.
    static constexpr qsizetype mostCharacters = 200'000;

    /// How much more room a reply gets from a model that thinks.
    static constexpr int roomForThinking = 4;

    virtual ~LLMProvider() = default;

    virtual const LLMConfiguration& configuration() const = 0;

    /// Starts at once. Dropping or closing the stream ends the request.
    virtual LLMStream streamChat(LLMRequest request) = 0;

    /// The names of the server's models, at most 200. Empty if it does not tell within 8 seconds.
    virtual Task<std::vector<QString>> models() { co_return std::vector<QString>(); }

    /// Reads a whole reply without tools. A reply over 200,000 characters or 20,000 pieces fails as
    /// an invalid response, so that a flood cannot block the program.
    Task<tl::expected<LLMCompletion, LLMFailure>> completeWithUsage(LLMRequest request);
    Task<tl::expected<QString, LLMFailure>> complete(LLMRequest request);
};

} // namespace pobblewig
