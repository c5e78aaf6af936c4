#pragma once

#include "PobblewigDesktop/controls/Theme.h"

#include "buddy/BuddyDrawing.h"

#include <QFont>
#include <QImage>

/// Pictures of what is painted around the buddy, in device pixels.
namespace pobblewig::BuddyPictures {

/// The look of the words beside the buddy.
struct Lettering {
    QFont font;
    double devicePixelRatio = 1;

    int pixels(double points) const { return qRound(points * devicePixelRatio); }
};

QImage stamp(BuddyDrawing::Stamp::Art art, int dot);

/// A glyph of the rain.
QImage glyph(int index, int level, int dot);

/// A mark with a few words, shortened if there are too many.
QImage pill(const BuddyBadge& badge, const Palette& palette, const Lettering& lettering);

/// The part of a picture that is not transparent, provided that it has no holes.
std::vector<QRect> rows(const QImage& image);

/// A picture, scaled to fit on paper of this size.
QImage onPaper(const QImage& picture, QSize size);

} // namespace pobblewig::BuddyPictures
