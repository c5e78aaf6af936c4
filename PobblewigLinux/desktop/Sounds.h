#pragma once

#include "presence/SoundPlaying.h"

#include <QString>
#include <QThreadPool>

#include <memory>

namespace pobblewig {

/// The sounds of the desktop's sound theme, by libcanberra.
///
/// The library is loaded with the first sound, and in the background, as it waits for the sound
/// server. Where it is not installed there is silence.
class Sounds : public SoundPlaying {
public:
    explicit Sounds(QString library = QStringLiteral("libcanberra.so.0"));
    ~Sounds() override;

    void play(QStringView name) override;

private:
    class Canberra;

    /// Used by the pool's only thread.
    std::unique_ptr<Canberra> m_canberra;
    QThreadPool m_background;
};

} // namespace pobblewig
