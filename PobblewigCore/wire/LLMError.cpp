#include "wire/LLMError.h"

#include "foundation/Overloaded.h"
#include "foundation/Text.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LLMError)
};

} // namespace

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
        return Texts::tr("Model not configured: %1").arg(text);
    case Kind::http:
        return Texts::tr("API error %1: %2")
            .arg(QString::number(status), Text::firstCharacters(text, 300));
    case Kind::invalidResponse:
        return Texts::tr("Invalid response: %1").arg(text);
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
