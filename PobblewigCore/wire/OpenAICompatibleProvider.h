#pragma once

#include "wire/LLMProvider.h"

#include <chrono>

namespace pobblewig {

/// Any server that speaks the OpenAI-compatible `chat/completions` format, as a stream.
class OpenAICompatibleProvider final : public LLMProvider {
public:
    /// The client outlives the provider and its streams.
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
