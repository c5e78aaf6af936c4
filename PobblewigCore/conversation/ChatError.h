#pragma once

#include "screen/ScreenCapturing.h"
#include "wire/LLMError.h"

#include <variant>

namespace pobblewig {

/// The user cancelled the turn.
struct Cancelled { };

/// Why a turn ended without a reply.
using ChatError = std::variant<Cancelled, LLMFailure, ScreenCaptureError>;

/// Null if it is another kind of error.
inline const LLMError* modelError(const ChatError& error)
{
    const auto* failure = std::get_if<LLMFailure>(&error);
    return failure ? std::get_if<LLMError>(failure) : nullptr;
}

/// An error that is not the model's is `plain`.
inline ServerComplaint complaint(const ChatError& error)
{
    const auto* model = modelError(error);
    return model ? model->complaint() : ServerComplaint::plain;
}

} // namespace pobblewig
