#pragma once

#include <QByteArrayList>
#include <QStringView>

namespace pobblewig::SoundLogic {

/// What the sound themes of the desktops have in place of a sound, the nearest first.
QByteArrayList nearest(QStringView name);

} // namespace pobblewig::SoundLogic
