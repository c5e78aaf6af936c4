#pragma once

#include "wire/LLMProvider.h"

#include <QJsonObject>

/// The request of the OpenAI-compatible `chat/completions` format.
namespace pobblewig::ChatCompletionsLogic {

/// Adds the headers that identify the sender. For the product's own backend, the session of a
/// signed-in user replaces the credential.
HTTPRequest applyAuth(HTTPRequest request, const LLMConfiguration& configuration);

/// The arguments of tool calls are sent back exactly as the model wrote them, unless they do not
/// parse: a server may refuse the whole conversation for those, so they become "{}".
QJsonObject encodeMessage(const LLMMessage& message);

QJsonObject buildPayload(
    const QString& modelID, const LLMRequest& request, bool includeStreamUsage);

/// Asks for the list of the server's models.
HTTPRequest modelsRequest(const LLMConfiguration& configuration);

/// The names in that list, at most 200. Skips those that are blank or longer than 200 characters.
std::vector<QString> modelNames(const QByteArray& body);

/// The request without its body and timeout.
HTTPRequest httpRequest(const LLMConfiguration& configuration);

} // namespace pobblewig::ChatCompletionsLogic
