#pragma once

#include "PobblewigDesktop/controls/Theme.h"

class QLabel;
class QWidget;

/// How the controls of our windows look.
namespace pobblewig::PanelStyle {

/// Colours and shapes of a window and everything in it. Costs nothing where they are those already.
void apply(QWidget& window, const Palette& palette);

/// Of the roles that the style sheet knows: "title", "caption", "detail", "primary", "quiet",
/// "danger".
void setRole(QWidget& widget, const QString& role);

/// A label that assistive technology reads by name and text.
void setText(QLabel& label, const QString& text);

/// Whether the desktop asks for windows that do not move.
bool isStill(const QWidget& widget);

} // namespace pobblewig::PanelStyle
