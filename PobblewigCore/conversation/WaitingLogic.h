#pragma once

#include "foundation/Time.h"

#include <QString>

#include <optional>

namespace pobblewig {

struct Waiting {
    enum class Cause { reply, tools, loading };

    Cause cause = Cause::reply;
    TimePoint since;
};

/// What a model has thought in a turn, and for how long.
struct Thinking {
    QString text = {};
    /// The time of earlier thoughts.
    std::chrono::milliseconds before {};
    /// Set while the model thinks.
    std::optional<TimePoint> since = std::nullopt;

    bool isEmpty() const { return text.isEmpty(); }
};

/// Words for a wait. Times are whole seconds.
namespace WaitingLogic {

/// Empty in the first four seconds. The host is that of the model's server.
QString words(const Waiting& waiting, const QString& host, TimePoint now);

/// "Thinking, 14 s", or "Thought for 14 s" once it is over.
QString words(const Thinking& thinking, TimePoint now);

} // namespace WaitingLogic

} // namespace pobblewig
