#pragma once

#include <QGuiApplication>
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

/// Returns a line of somebody's own words so that it reads as it does on its own, even amid an
/// interface of the other direction.
inline QString isolated(const QString& line)
{
    return line.isRightToLeft() == QGuiApplication::isRightToLeft()
        ? line
        : QChar(0x2068) + line + QChar(0x2069);
}

} // namespace pobblewig
