#pragma once

#include <QString>

namespace pobblewig {

/// The buddy's current business.
struct BuddyState {
    enum class Kind { idle, working, responding, surprised, notify, done };

    Kind kind = Kind::idle;
    /// A few words shown beside the buddy, for `notify` and `done`.
    QString label;

    bool operator==(const BuddyState&) const = default;
};

} // namespace pobblewig
