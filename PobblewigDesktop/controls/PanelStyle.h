#pragma once

#include "PobblewigDesktop/controls/Theme.h"

class QLabel;
class QWidget;

/// The look of the controls in all windows.
namespace pobblewig::PanelStyle {

/// Applies the colours and shapes to a window and everything in it. Costs nothing if they are
/// applied already.
void apply(QWidget& window, const Palette& palette);

/// Sets one of the roles that the style sheet knows: "title", "caption", "detail", "advice",
/// "primary", "quiet", "danger".
void setRole(QWidget& widget, const QString& role);

/// Sets the text of a label that assistive technology reads by name and text.
void setText(QLabel& label, const QString& text);

/// Returns whether the desktop asks for windows without animations.
bool isStill(const QWidget& widget);

} // namespace pobblewig::PanelStyle
