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

/// What can end a model call: the model's own errors, or those of the way there.
using LLMFailure = std::variant<LLMError, TransportError>;

QString description(const LLMFailure& failure);

/// For the log. A server's words may quote a key or the conversation: they are left out.
QString loggable(const LLMFailure& failure);

} // namespace pobblewig
