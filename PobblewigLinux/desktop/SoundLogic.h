#pragma once

#include <QByteArrayList>
#include <QStringView>

namespace pobblewig::SoundLogic {

/// The names under which sound themes may have a sound, the closest first.
QByteArrayList nearest(QStringView name);

} // namespace pobblewig::SoundLogic
