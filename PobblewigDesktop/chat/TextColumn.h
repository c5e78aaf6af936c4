#pragma once

class QFontMetrics;

/// The column in the middle of the panel that all its texts stand in.
namespace pobblewig::TextColumn {

/// Between the column and the edges of a narrow panel, in pixels.
constexpr int margin = 16;

/// How wide it is at most, so that lines stay easy to read.
int longest(const QFontMetrics& metrics);

} // namespace pobblewig::TextColumn
