#pragma once

#include "settings/ThemePreference.h"

#include <QColor>
#include <QPalette>
#include <QString>
#include <QStringList>

namespace pobblewig {

enum class ColorScheme { light, dark };

/// Every colour of the windows. The buddy brings its own.
struct Palette {
    ColorScheme scheme = ColorScheme::light;
    QColor window;
    QColor surface;
    QColor text;
    QColor muted;
    /// Separates, and carries no meaning of its own.
    QColor hairline;
    /// The edge of a control.
    QColor outline;
    QColor danger;
    /// One primary control per view, focus rings, links.
    QColor accent;
    /// Text and icons on the accent.
    QColor onAccent;
    /// Behind the user's own words.
    QColor bubble;
    QColor selection;
    /// Behind what a search found, and behind the one it stands at.
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

/// What the user chose, or else what the desktop shows.
ColorScheme colorScheme(ThemePreference preference, ColorScheme desktop);

/// What the desktop shows, to judge by the colours that it gave the application at its start.
ColorScheme desktopScheme(const QPalette& applicationPalette);

/// From 1 (none) to 21 (black on white).
double contrast(const QColor& one, const QColor& other);

QPalette widgetPalette(const Palette& palette);

} // namespace Theme

} // namespace pobblewig
