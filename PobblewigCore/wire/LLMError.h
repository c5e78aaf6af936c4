#pragma once

#include "foundation/HTTPClient.h"
#include "wire/ServerComplaint.h"

#include <QString>

#include <variant>

namespace pobblewig {

struct LLMError {
    enum class Kind { notConfigured, http, invalidResponse, onlyThought };

    static LLMError notConfigured(QString reason);
    /// The status is 0 for an error within a reply that has none.
    static LLMError http(int status, QString body);
    static LLMError invalidResponse(QString reason);
    /// A web page in place of an answer, such as the login of a network.
    static LLMError page(int status);
    /// The model has used all of its reply for thinking.
    static LLMError onlyThought();

    Kind kind = Kind::notConfigured;
    int status = 0;
    /// The reason, or the response's body.
    QString text;
    /// When the server wants to be asked again, as its header says it.
    QByteArray retryAfter = {};
    /// A web page came in place of an answer.
    bool isPage = false;

    /// What a server complains about. An error of another kind is `plain`.
    ServerComplaint complaint() const;

    /// For the user. Shows at most the first 300 characters of a body.
    QString description() const;
};

/// Why a model call failed: an error of the model, or one of the transport.
using LLMFailure = std::variant<LLMError, TransportError>;

QString description(const LLMFailure& failure);

/// A failure of the transport is `plain`.
ServerComplaint complaint(const LLMFailure& failure);

/// For the log. Leaves out the server's text, which may quote a key or the conversation.
QString loggable(const LLMFailure& failure);

} // namespace pobblewig
