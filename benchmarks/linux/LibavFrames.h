#pragma once

#include <QString>

namespace pobblewig {

/// Decodes a GIF by libav and counts its frames; 0 if that fails.
int libavFrames(const QString& path);

} // namespace pobblewig
