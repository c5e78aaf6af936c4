#include "wire/LLMError.h"

#include "foundation/Overloaded.h"
#include "foundation/Text.h"

namespace pobblewig {

LLMError LLMError::notConfigured(QString reason)
{
    return { Kind::notConfigured, 0, std::move(reason) };
}

LLMError LLMError::http(int status, QString body)
{
    return { Kind::http, status, std::move(body) };
}

LLMError LLMError::invalidResponse(QString reason)
{
    return { Kind::invalidResponse, 0, std::move(reason) };
}

QString LLMError::description() const
{
    switch (kind) {
    case Kind::notConfigured:
        return QStringLiteral("Model not configured: ") + text;
    case Kind::http:
        return QStringLiteral("API error %1: ").arg(status) + Text::firstCharacters(text, 300);
    case Kind::invalidResponse:
        return QStringLiteral("Invalid response: ") + text;
    }
    Q_UNREACHABLE();
}

QString description(const LLMFailure& failure)
{
    return std::visit([](const auto& error) { return error.description(); }, failure);
}

QString loggable(const LLMFailure& failure)
{
    return std::visit(Overloaded {
                          [](LLMError error) {
                              error.text.clear();
                              return error.description();
                          },
                          [](const TransportError& error) { return error.description(); },
                      },
        failure);
}

} // namespace pobblewig
