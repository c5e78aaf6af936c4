#pragma once

#include "wire/RequestLog.h"

#include <chrono>
#include <functional>

namespace pobblewig {

/// A server with the OpenAI-compatible `chat/completions` format, with streamed replies.
class OpenAICompatibleProvider final : public LLMProvider {
public:
    /// How long a server may take.
    struct Patience {
        /// Without sending anything.
        std::chrono::milliseconds silence = std::chrono::seconds(120);
        /// Until the reply begins, whatever else arrives.
        std::chrono::milliseconds beginning = std::chrono::minutes(5);
    };

    /// Begins to note each request.
    using Watching = std::function<RequestWatch()>;

    /// The client must outlive the provider and its streams.
    OpenAICompatibleProvider(LLMConfiguration configuration, HTTPClient& http);
    OpenAICompatibleProvider(LLMConfiguration configuration, HTTPClient& http, Patience patience);

    /// To be called before the first request.
    void setWatching(Watching watching) { m_watching = std::move(watching); }

    const LLMConfiguration& configuration() const override { return m_configuration; }

    LLMStream streamChat(LLMRequest request) override;
    Task<std::vector<QString>> models() override;

private:
    HTTPRequest httpRequest(const LLMRequest& request) const;

    LLMConfiguration m_configuration;
    HTTPClient& m_http;
    Patience m_patience;
    Watching m_watching = [] { return RequestWatch(); };
};

} // namespace pobblewig
