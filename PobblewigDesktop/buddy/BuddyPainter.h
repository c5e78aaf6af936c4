#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include "buddy/BuddyDrawing.h"
#include "buddy/RainGlyphs.h"

#include <QCache>
#include <QFont>

#include <array>

class QPainter;

namespace pobblewig {

/// Paints drawings in device pixels, from pictures that are made only once.
class BuddyPainter {
public:
    BuddyPainter();

    /// The colours and the font of the badge.
    void setPalette(const Palette& palette);
    void setFont(const QFont& font, double devicePixelRatio);

    /// The size of a badge with this label, in device pixels.
    QSize pillSize(const BuddyBadge& badge);

    void paint(QPainter& painter, const BuddyDrawing& drawing);

    /// Adds the drawing's badge to its shape, once it is more than a shade.
    void outlineBadge(const BuddyDrawing& drawing, BuddyShape& shape);

private:
    struct Pill {
        BuddyBadge::Mark mark = BuddyBadge::Mark::reminder;
        QString label;
        QImage image;
        /// The part of the picture that is not transparent.
        std::vector<QRect> rows;
    };

    const Pill& pill(BuddyBadge::Mark mark, const QString& label);
    const QImage& picture(const QImage& picture, QSize size);
    void paintRain(QPainter& painter, const BuddyDrawing::Rain& rain);
    void paintCard(QPainter& painter, const BuddyDrawing::Card& card);
    void paintStamps(QPainter& painter, const BuddyDrawing& drawing);

    Palette m_palette;
    QFont m_font;
    double m_ratio = 1;
    Pill m_pill;
    int m_stampDot = 0;
    std::array<QImage, BuddyDrawing::Stamp::arts> m_stamps;
    int m_rainDot = 0;
    std::array<std::array<QImage, RainGlyphs::count>, BuddyRain::levels> m_glyphs;
    /// By the original's cache key; the cost is in kilobytes.
    QCache<qint64, QImage> m_pictures;
};

} // namespace pobblewig
