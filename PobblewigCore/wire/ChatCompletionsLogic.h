#pragma once

#include "wire/LLMProvider.h"

#include <QJsonObject>

/// The request of the OpenAI-compatible `chat/completions` format.
namespace pobblewig::ChatCompletionsLogic {

/// The request with the headers that tell who asks. On the way to the product's own backend the
/// session of a signed-in user takes the place of the credential.
HTTPRequest applyAuth(HTTPRequest request, const LLMConfiguration& configuration);

/// Arguments of tool calls are sent back as the very text that the model wrote.
QJsonObject encodeMessage(const LLMMessage& message);

QJsonObject buildPayload(
    const QString& modelID, const LLMRequest& request, bool includeStreamUsage);

/// Complete but for its body and timeout.
HTTPRequest httpRequest(const LLMConfiguration& configuration);

} // namespace pobblewig::ChatCompletionsLogic
