#pragma once

#include "settings/ThemePreference.h"

#include <QColor>
#include <QPalette>
#include <QString>
#include <QStringList>

namespace pobblewig {

enum class ColorScheme { light, dark };

/// The colours of the windows. The buddy brings its own.
struct Palette {
    ColorScheme scheme = ColorScheme::light;
    QColor window;
    QColor surface;
    QColor text;
    QColor muted;
    /// A separator that carries no meaning of its own.
    QColor hairline;
    /// The edge of a control.
    QColor outline;
    QColor danger;
    /// The one primary control of a view, and focus rings.
    QColor accent;
    QColor link;
    /// Text and icons on the accent.
    QColor onAccent;
    /// Behind the user's own words.
    QColor bubble;
    /// Behind code.
    QColor code;
    QColor selection;
    /// Behind the matches of a search, and behind the current one.
    QColor match;
    QColor currentMatch;

    bool operator==(const Palette&) const = default;
};

/// The colours for a choice in the settings.
namespace Theme {

/// In the order in which the settings offer them.
QStringList accentIDs();

/// An unknown accent shows as coral.
Palette palette(ColorScheme scheme, const QString& accentID);

/// Returns the user's choice, or else the desktop's.
ColorScheme colorScheme(ThemePreference preference, ColorScheme desktop);

/// Returns the desktop's scheme, judging by the colours that it gave the application at its start.
ColorScheme desktopScheme(const QPalette& applicationPalette);

/// Returns the contrast, from 1 (none) to 21 (black on white).
double contrast(const QColor& one, const QColor& other);

QPalette widgetPalette(const Palette& palette);

} // namespace Theme

} // namespace pobblewig
