#pragma once

#include <QVarLengthArray>

namespace pobblewig {

/// The hearts that rise from a petted buddy.
class BuddyHearts {
public:
    /// How long a heart is visible, in seconds.
    static constexpr double lifetime = 1.4;
    static constexpr int atOnce = 15;

    struct Heart {
        /// From -1 (over the left edge of the body) to 1.
        double x = 0;
        double born = 0;
        bool isLarge = false;
    };
    using Hearts = QVarLengthArray<Heart, atOnce>;

    /// Some are born a moment after now.
    const Hearts& hearts() const { return m_hearts; }

    /// Adds a handful; the oldest make room.
    void rise(double now);
    void tick(double now);

private:
    Hearts m_hearts;
    int m_count = 0;
};

} // namespace pobblewig
