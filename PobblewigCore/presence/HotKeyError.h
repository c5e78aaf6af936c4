#pragma once

#include <QKeySequence>

namespace pobblewig {

/// Why a combination of keys cannot be the hot key.
struct HotKeyError {
    enum class Kind {
        /// Another program has it.
        taken,
        /// The user or the desktop said no.
        refused,
        /// The desktop lets no program have any.
        unavailable,
        /// The keyboard lacks it, or it would take a key away that people type with.
        unusable,
    };

    Kind kind;
    QKeySequence keys;

    /// For the user.
    QString description() const;
};

} // namespace pobblewig
