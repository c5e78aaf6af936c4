#pragma once

#include <QStringView>

namespace pobblewig {

class SoundPlaying {
public:
    virtual ~SoundPlaying() = default;

    /// Plays the sound of this name, such as "Glass", or the nearest one that the desktop has.
    /// Returns at once. Plays nothing if there is none.
    virtual void play(QStringView name) = 0;
};

} // namespace pobblewig
