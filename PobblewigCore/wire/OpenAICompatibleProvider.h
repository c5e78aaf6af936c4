#pragma once

#include "wire/LLMProvider.h"

#include <chrono>

namespace pobblewig {

/// A server with the OpenAI-compatible `chat/completions` format, with streamed replies.
class OpenAICompatibleProvider final : public LLMProvider {
public:
    /// The client must outlive the provider and its streams.
    OpenAICompatibleProvider(LLMConfiguration configuration, HTTPClient& http,
        std::chrono::milliseconds requestTimeout = std::chrono::seconds(120));

    const LLMConfiguration& configuration() const override { return m_configuration; }

    LLMStream streamChat(LLMRequest request) override;

private:
    HTTPRequest httpRequest(const LLMRequest& request) const;

    LLMConfiguration m_configuration;
    HTTPClient& m_http;
    std::chrono::milliseconds m_requestTimeout;
};

} // namespace pobblewig
