#pragma once

#include "presence/SoundPlaying.h"

#include <QString>
#include <QThreadPool>

#include <memory>

namespace pobblewig {

/// Plays the desktop's sound theme through libcanberra.
///
/// The library is loaded for the first sound, in the background, because it waits for the sound
/// server. If it is not installed, nothing is played.
class Sounds : public SoundPlaying {
public:
    explicit Sounds(QString library = QStringLiteral("libcanberra.so.0"));
    ~Sounds() override;

    void play(QStringView name) override;

private:
    class Canberra;

    /// Used only by the pool's single thread.
    std::unique_ptr<Canberra> m_canberra;
    QThreadPool m_background;
};

} // namespace pobblewig
