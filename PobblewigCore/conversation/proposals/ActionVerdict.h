#pragma once

#include <QString>

namespace pobblewig {

/// What becomes of an action that a model requests, as things stand when it does.
struct ActionVerdict {
    enum class Kind {
        /// Done without a question when the turn ends.
        noted,
        /// The same, because the user allowed it always.
        approved,
        /// The user will be asked.
        pending,
        /// The user is being asked already.
        waiting,
        /// It was done a moment ago and still holds.
        done,
        /// The user has just dismissed it.
        dismissed,
        /// Another request has the same id.
        idTaken,
        /// Too many changes are waiting for the user.
        tooMany,
        refused,
    };

    Kind kind = Kind::refused;
    /// Why it is refused, for the user and the model alike.
    QString reason = {};

    bool operator==(const ActionVerdict&) const = default;
};

} // namespace pobblewig
