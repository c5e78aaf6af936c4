#pragma once

#include "screen/ScreenCapturing.h"
#include "wire/LLMError.h"

#include <variant>

namespace pobblewig {

/// The user cancelled the turn.
struct Cancelled { };

/// Why a turn ended without a reply.
using ChatError = std::variant<Cancelled, LLMFailure, ScreenCaptureError>;

} // namespace pobblewig
