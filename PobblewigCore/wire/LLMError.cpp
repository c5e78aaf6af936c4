#include "wire/LLMError.h"

#include "foundation/Overloaded.h"
#include "foundation/Text.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LLMError)
};

QString httpDescription(const LLMError& error)
{
    switch (error.complaint()) {
    case ServerComplaint::contextOverflow:
        return Texts::tr("The conversation is too long for this model.");
    case ServerComplaint::imagesUnsupported:
        return Texts::tr("This model cannot look at pictures. VISION_MODEL_ID can name one that "
                         "can.");
    case ServerComplaint::modelLoading:
        return Texts::tr("The model is still loading. Try again in a few minutes.");
    case ServerComplaint::toolsUnsupported:
    case ServerComplaint::modelUnknown:
    case ServerComplaint::plain:
        break;
    }
    const auto shown = Text::firstCharacters(error.text, 300);
    return error.status == 0
        ? Texts::tr("API error: %1").arg(shown)
        : Texts::tr("API error %1: %2").arg(QString::number(error.status), shown);
}

} // namespace

LLMError LLMError::notConfigured(QString reason)
{
    return { .kind = Kind::notConfigured, .text = std::move(reason) };
}

LLMError LLMError::http(int status, QString body)
{
    return { .kind = Kind::http, .status = status, .text = std::move(body) };
}

LLMError LLMError::invalidResponse(QString reason)
{
    return { .kind = Kind::invalidResponse, .text = std::move(reason) };
}

LLMError LLMError::page(int status)
{
    return { .kind = Kind::invalidResponse,
        .status = status,
        .text = QStringLiteral("a web page came in place of an answer."),
        .isPage = true };
}

LLMError LLMError::onlyThought()
{
    return { .kind = Kind::onlyThought };
}

ServerComplaint LLMError::complaint() const
{
    return kind == Kind::http ? ServerComplaintLogic::complaint(status, text)
                              : ServerComplaint::plain;
}

QString LLMError::description() const
{
    switch (kind) {
    case Kind::notConfigured:
        return Texts::tr("Model not configured: %1").arg(text);
    case Kind::http:
        return httpDescription(*this);
    case Kind::invalidResponse:
        return Texts::tr("Invalid response: %1").arg(text);
    case Kind::onlyThought:
        return Texts::tr("The model used its whole reply for thinking. A higher MAX_OUTPUT_TOKENS "
                         "leaves room for the answer.");
    }
    Q_UNREACHABLE();
}

QString description(const LLMFailure& failure)
{
    return std::visit([](const auto& error) { return error.description(); }, failure);
}

ServerComplaint complaint(const LLMFailure& failure)
{
    const auto* error = std::get_if<LLMError>(&failure);
    return error ? error->complaint() : ServerComplaint::plain;
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
