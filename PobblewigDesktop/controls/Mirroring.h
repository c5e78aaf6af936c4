#pragma once

#include <QMargins>
#include <QWidget>

namespace pobblewig {

/// Returns margins that are given for writing from left to right, as the widget's layout needs
/// them: Qt mirrors the places of widgets, but not the margins around them.
inline QMargins mirrored(const QMargins& margins, const QWidget& widget)
{
    return widget.isRightToLeft()
        ? QMargins(margins.right(), margins.top(), margins.left(), margins.bottom())
        : margins;
}

} // namespace pobblewig
