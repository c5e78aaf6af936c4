#pragma once

#include <QKeySequence>

namespace pobblewig {

/// Why a combination of keys cannot be the hot key.
struct HotKeyError {
    enum class Kind {
        /// Another program has it.
        taken,
        /// The user or the desktop refused it.
        refused,
        /// The desktop does not let programs have any.
        unavailable,
        /// The keyboard lacks it, or people need it for typing.
        unusable,
    };

    Kind kind;
    QKeySequence keys;

    /// Returns a text for the user.
    QString description() const;
};

} // namespace pobblewig
