#pragma once

#include <QTransform>

namespace pobblewig {

/// What turns a JPEG upright, by the camera's note on how it was held. Nothing is turned without a
/// note, or by one that makes no sense.
QTransform uprightTransform(QByteArrayView jpeg);

} // namespace pobblewig
