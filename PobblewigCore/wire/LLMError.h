#pragma once

#include "foundation/HTTPClient.h"

#include <QString>

#include <variant>

namespace pobblewig {

struct LLMError {
    enum class Kind { notConfigured, http, invalidResponse };

    static LLMError notConfigured(QString reason);
    static LLMError http(int status, QString body);
    static LLMError invalidResponse(QString reason);

    Kind kind = Kind::notConfigured;
    int status = 0;
    /// The reason, or the response's body.
    QString text;

    /// For the user. Shows at most the first 300 characters of a body.
    QString description() const;
};

/// Why a model call failed: an error of the model, or one of the transport.
using LLMFailure = std::variant<LLMError, TransportError>;

QString description(const LLMFailure& failure);

/// For the log. Leaves out the server's text, which may quote a key or the conversation.
QString loggable(const LLMFailure& failure);

} // namespace pobblewig
