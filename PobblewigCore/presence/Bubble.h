#pragma once

#include <QString>

namespace pobblewig {

/// A few words that the buddy says outside the chat.
struct Bubble {
    /// In the order in which they are shown when several wait.
    enum class Kind { farewell, reminder, answer, problem, proposals, greeting, sight };

    Kind kind = Kind::answer;
    QString text;

    bool operator==(const Bubble&) const = default;
};

} // namespace pobblewig
