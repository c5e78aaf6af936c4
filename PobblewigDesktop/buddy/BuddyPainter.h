#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include "buddy/BuddyDrawing.h"
#include "buddy/RainGlyphs.h"

#include <QCache>
#include <QFont>

#include <array>

class QPainter;

namespace pobblewig {

/// Paints drawings in device pixels, from pictures that are made once.
class BuddyPainter {
public:
    BuddyPainter();

    /// The colours and letters of the words beside the buddy.
    void setPalette(const Palette& palette);
    void setFont(const QFont& font, double devicePixelRatio);

    /// How large the badge will be, in device pixels.
    QSize pillSize(const BuddyBadge& badge);

    void paint(QPainter& painter, const BuddyDrawing& drawing);

    /// Adds the badge of the drawing to its shape, once it is more than a shade.
    void outlineBadge(const BuddyDrawing& drawing, BuddyShape& shape);

private:
    struct Pill {
        BuddyBadge::Mark mark = BuddyBadge::Mark::reminder;
        QString label;
        QImage image;
        /// Of the picture, what is not transparent.
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
    /// By the key of the original, the cost in kilobytes.
    QCache<qint64, QImage> m_pictures;
};

} // namespace pobblewig
