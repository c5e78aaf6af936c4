#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>

/// Line icons, tinted with the colour of the text around them.
namespace pobblewig::Icons {

/// Each is drawn in "icons/<name>.svg".
enum class Name {
    send,
    stop,
    retry,
    screen,
    newSession,
    find,
    copy,
    save,
    close,
    chevronUp,
    chevronDown,
    chevronLeft,
    chevronRight,
    edit,
    menu,
    clock,
    check,
    sliders,
    face,
    shield,
    folder,
    chip,
    info,
    /// In a grey that is seen on both themes.
    arrowUp,
    arrowDown,
    tick,
    tickLight,
    undo,
    attach,
    document,
    list,
    eye,
    pattern,
    week,
    chart,
    plug,
};

/// A square of `side` device-independent pixels, sharp at the given ratio.
QPixmap pixmap(Name name, const QColor& color, int side, qreal devicePixelRatio);

/// The name of the drawing's resource, for style sheets. They cannot tint it.
QString resource(Name name);

/// For controls: disabled ones show the second colour.
QIcon icon(Name name, const QColor& color, const QColor& disabledColor);

} // namespace pobblewig::Icons
