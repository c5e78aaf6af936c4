#include "PobblewigDesktop/buddy/BuddyPictures.h"

#include "buddy/RainGlyphs.h"

#include <QFontMetrics>
#include <QPainter>

namespace pobblewig {

namespace {

using Stamp = BuddyDrawing::Stamp;

struct ArtColors {
    QColor fill;
    QColor outline;
    QColor light;

    const QColor& of(char letter) const
    {
        return letter == 'O' ? outline : letter == 'W' ? light : fill;
    }
};

QImage blank(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void paintArt(
    QPainter& painter, const PixelArt& art, QPoint corner, int dot, const ArtColors& colors)
{
    for (int row = 0; row < art.height(); ++row) {
        for (int col = 0; col < art.width(); ++col) {
            const auto letter = art.rows[size_t(row)][size_t(col)];
            const QRect rect(corner + QPoint(col, row) * dot, QSize(dot, dot));
            if (letter != '.')
                painter.fillRect(rect, colors.of(letter));
        }
    }
}

ArtColors stampColors(Stamp::Art art)
{
    if (art == Stamp::Art::smallHeart || art == Stamp::Art::largeHeart)
        return { QColor(240, 96, 118), QColor(176, 48, 78), QColor(255, 206, 212) };
    return { QColor(132, 148, 226), QColor(48, 56, 116), {} };
}

ArtColors markColors(BuddyBadge::Mark mark)
{
    if (mark == BuddyBadge::Mark::done)
        return { QColor(72, 153, 106), QColor(48, 112, 76), Qt::white };
    return { QColor(217, 89, 61), QColor(160, 58, 36), Qt::white };
}

PixelArt markArt(BuddyBadge::Mark mark)
{
    return mark == BuddyBadge::Mark::done ? PixelArts::doneMark() : PixelArts::reminderMark();
}

/// The steps of a tail that points down at the buddy.
void paintTail(QPainter& painter, QPoint top, int dot, const QColor& color)
{
    for (const auto width : { 6, 4, 2 }) {
        painter.fillRect(top.x() - width * dot / 2, top.y(), width * dot, dot, color);
        top.ry() += dot;
    }
}

QImage bareMark(BuddyBadge::Mark mark, int dot)
{
    const auto art = markArt(mark);
    auto image = blank(QSize(art.width(), art.height()) * dot);
    QPainter painter(&image);
    paintArt(painter, art, {}, dot, markColors(mark));
    return image;
}

struct PillMeasure {
    PillMeasure(const BuddyBadge& badge, const BuddyPictures::Lettering& lettering)
        : dot(qMax(1, lettering.pixels(2)))
        , padding(lettering.pixels(4))
        , font(lettering.font)
    {
        constexpr double widest = 220;
        font.setPixelSize(qMax(1, lettering.pixels(12)));
        const QFontMetrics metrics(font);
        words = metrics.elidedText(badge.label, Qt::ElideRight, lettering.pixels(widest));
        const auto art = markArt(badge.mark);
        const auto left = art.width() * dot + 2 * padding;
        const auto width = metrics.horizontalAdvance(words);
        body = { left + width + padding + lettering.pixels(3), art.height() * dot + 2 * padding };
        text = { left, 0, body.width(), body.height() };
    }

    int dot;
    int padding;
    QFont font;
    QString words;
    /// Without the tail.
    QSize body;
    QRect text;
};

} // namespace

QImage BuddyPictures::stamp(Stamp::Art art, int dot)
{
    const auto shown = BuddyDrawing::art(art);
    auto image = blank(QSize(shown.width(), shown.height()) * dot);
    QPainter painter(&image);
    paintArt(painter, shown, {}, dot, stampColors(art));
    return image;
}

QImage BuddyPictures::glyph(int index, int level, int dot)
{
    // Green enough for dark wallpapers, dark enough for bright ones.
    constexpr auto brightest = BuddyRain::levels - 1;
    const auto strength = (level + 1.0) / BuddyRain::levels;
    const auto color =
        level == brightest ? QColor(70, 214, 128) : QColor(28, 156, 84, qRound(255 * strength));
    auto image = blank(QSize(RainGlyphs::columns + 1, RainGlyphs::rows + 1) * dot);
    QPainter painter(&image);
    const auto& rows = RainGlyphs::glyph(index);
    for (int row = 0; row < RainGlyphs::rows; ++row) {
        for (int col = 0; col < RainGlyphs::columns; ++col) {
            if ((rows[size_t(row)] >> (RainGlyphs::columns - 1 - col)) & 1)
                painter.fillRect(col * dot, row * dot, dot, dot, color);
        }
    }
    return image;
}

QImage BuddyPictures::pill(
    const BuddyBadge& badge, const Palette& palette, const Lettering& lettering)
{
    if (badge.label.isEmpty())
        return bareMark(badge.mark, qMax(1, lettering.pixels(2)));
    const PillMeasure measure(badge, lettering);
    auto image = blank(measure.body + QSize(0, 3 * measure.dot));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto line = lettering.devicePixelRatio;
    const auto edge =
        QRectF(QPointF(), measure.body).adjusted(line / 2, line / 2, -line / 2, -line / 2);
    painter.setPen(QPen(palette.hairline, line));
    painter.setBrush(palette.surface);
    painter.drawRoundedRect(edge, edge.height() / 2, edge.height() / 2);
    const QPoint tail(measure.body.width() / 2, measure.body.height() - lettering.pixels(1));
    paintTail(painter, tail, measure.dot, palette.surface);
    const QPoint corner(measure.padding, measure.padding);
    paintArt(painter, markArt(badge.mark), corner, measure.dot, markColors(badge.mark));
    painter.setFont(measure.font);
    painter.setPen(palette.text);
    painter.drawText(measure.text, Qt::AlignVCenter | Qt::AlignLeft, measure.words);
    return image;
}

std::vector<QRect> BuddyPictures::rows(const QImage& image)
{
    constexpr int halfTransparent = 127;
    std::vector<QRect> rows;
    for (int y = 0; y < image.height(); ++y) {
        QRect row;
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > halfTransparent)
                row |= QRect(x, y, 1, 1);
        }
        if (!row.isEmpty())
            rows.push_back(row);
    }
    return rows;
}

QImage BuddyPictures::onPaper(const QImage& picture, QSize size)
{
    QImage paper(size, QImage::Format_RGB32);
    paper.fill(Qt::white);
    const auto scaled = picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&paper);
    const QRect area(QPoint(), size);
    painter.drawImage(area.center() - scaled.rect().center(), scaled);
    return paper;
}

} // namespace pobblewig
