#include "PobblewigDesktop/presence/PresenceMark.h"

namespace pobblewig {

namespace {

/// In cells of the buddy's own size.
constexpr int side = 7;

/// Among the pixels, "#" is the disc and "o" the sign on it.
struct Mark {
    QRgb disc;
    const char* pixels;
};

constexpr Mark working { 0xffd9593d,
    ".#####."
    "#######"
    "#######"
    "#o#o#o#"
    "#######"
    "#######"
    ".#####." };

constexpr Mark reminder { 0xffb0660a,
    ".#####."
    "###o###"
    "###o###"
    "###o###"
    "#######"
    "###o###"
    ".#####." };

constexpr Mark paused { 0xff6b625d,
    ".#####."
    "#######"
    "##o#o##"
    "##o#o##"
    "##o#o##"
    "#######"
    ".#####." };

constexpr Mark asleep { 0xff5f5aa2,
    ".#####."
    "#ooooo#"
    "####o##"
    "###o###"
    "##o####"
    "#ooooo#"
    ".#####." };

const Mark* mark(PresenceBadge badge)
{
    switch (badge) {
    case PresenceBadge::none:
        return nullptr;
    case PresenceBadge::working:
        return &working;
    case PresenceBadge::reminder:
        return &reminder;
    case PresenceBadge::paused:
        return &paused;
    case PresenceBadge::asleep:
        return &asleep;
    }
    Q_UNREACHABLE();
}

} // namespace

void PresenceMark::paint(QPainter& painter, PresenceBadge badge, const QRect& square)
{
    const auto* const shown = mark(badge);
    if (!shown)
        return;
    const auto cell = qMax(1, square.width() / 16);
    const auto end = QPoint(square.width(), square.height()) + square.topLeft();
    const auto corner = end - QPoint(side, side) * cell;

    painter.setCompositionMode(QPainter::CompositionMode_Source);
    // A gap sets the mark off from the face.
    painter.fillRect(QRect(corner - QPoint(cell, cell), square.bottomRight()), Qt::transparent);
    for (int pixel = 0; pixel < side * side; ++pixel) {
        const auto sign = shown->pixels[pixel];
        const QPoint place(pixel % side * cell, pixel / side * cell);
        if (sign != '.')
            painter.fillRect(QRect(corner + place, QSize(cell, cell)),
                sign == 'o' ? QColor(Qt::white) : QColor(shown->disc));
    }
}

} // namespace pobblewig
