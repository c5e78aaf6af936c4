#include "PobblewigDesktop/buddy/BuddyPainter.h"

#include "PobblewigDesktop/buddy/BuddyPictures.h"

#include <QPainter>

namespace pobblewig {

namespace {

constexpr qsizetype picturesInKilobytes = 8 * 1024;

QColor color(const RGB& rgb)
{
    return { rgb.red, rgb.green, rgb.blue };
}

void setOpacity(QPainter& painter, int opacity)
{
    painter.setOpacity(double(opacity) / BuddyDrawing::opaque);
}

} // namespace

BuddyPainter::BuddyPainter()
    : m_pictures(picturesInKilobytes)
{
}

void BuddyPainter::setPalette(const Palette& palette)
{
    m_palette = palette;
    m_pill = {};
}

void BuddyPainter::setFont(const QFont& font, double devicePixelRatio)
{
    m_font = font;
    m_ratio = devicePixelRatio;
    m_pill = {};
}

QSize BuddyPainter::pillSize(const BuddyBadge& badge)
{
    return pill(badge.mark, badge.label).image.size();
}

void BuddyPainter::paint(QPainter& painter, const BuddyDrawing& drawing)
{
    paintRain(painter, drawing.rain);
    for (const auto& part : drawing.parts)
        painter.fillRect(part.rect, color(part.rgb));
    if (drawing.card)
        paintCard(painter, *drawing.card);
    paintStamps(painter, drawing);
    if (drawing.badge) {
        setOpacity(painter, drawing.badge->opacity);
        const auto& image = pill(drawing.badge->mark, drawing.badge->label).image;
        painter.drawImage(drawing.badge->rect.topLeft(), image);
        setOpacity(painter, BuddyDrawing::opaque);
    }
}

void BuddyPainter::outlineBadge(const BuddyDrawing& drawing, BuddyShape& shape)
{
    if (!drawing.badge || drawing.badge->opacity <= BuddyDrawing::opaque / 2)
        return;
    for (const auto& row : pill(drawing.badge->mark, drawing.badge->label).rows)
        shape.pressable.push_back(row.translated(drawing.badge->rect.topLeft()));
}

const BuddyPainter::Pill& BuddyPainter::pill(BuddyBadge::Mark mark, const QString& label)
{
    if (m_pill.image.isNull() || m_pill.mark != mark || m_pill.label != label) {
        auto image = BuddyPictures::pill({ mark, label }, m_palette, { m_font, m_ratio });
        auto rows = BuddyPictures::rows(image);
        m_pill = { mark, label, std::move(image), std::move(rows) };
    }
    return m_pill;
}

const QImage& BuddyPainter::picture(const QImage& picture, QSize size)
{
    const auto key = picture.cacheKey();
    if (const auto* cached = m_pictures.object(key); cached && cached->size() == size)
        return *cached;
    auto* scaled = new QImage(BuddyPictures::onPaper(picture, size));
    m_pictures.insert(key, scaled, qMax<qsizetype>(1, scaled->sizeInBytes() / 1024));
    return *scaled;
}

void BuddyPainter::paintRain(QPainter& painter, const BuddyDrawing::Rain& rain)
{
    if (rain.opacity == 0)
        return;
    if (m_rainDot != rain.dot) {
        m_rainDot = rain.dot;
        m_glyphs = {};
    }
    setOpacity(painter, rain.opacity);
    for (const auto& drop : rain.drops) {
        auto& glyph = m_glyphs[size_t(drop.level)][size_t(drop.glyph)];
        if (glyph.isNull())
            glyph = BuddyPictures::glyph(drop.glyph, drop.level, rain.dot);
        painter.drawImage(rain.place(drop), glyph);
    }
    setOpacity(painter, BuddyDrawing::opaque);
}

void BuddyPainter::paintCard(QPainter& painter, const BuddyDrawing::Card& card)
{
    const auto dot = card.dot;
    const auto edge = color(card.rgb);
    painter.fillRect(card.frame.adjusted(dot, 0, -dot, 0), edge);
    painter.fillRect(card.frame.adjusted(0, dot, 0, -dot), edge);
    const auto inside = card.inside();
    painter.drawImage(inside.topLeft(), picture(card.picture, inside.size()));
    if (card.nextOpacity > 0) {
        setOpacity(painter, card.nextOpacity);
        painter.drawImage(inside.topLeft(), picture(card.next, inside.size()));
        setOpacity(painter, BuddyDrawing::opaque);
    }
}

void BuddyPainter::paintStamps(QPainter& painter, const BuddyDrawing& drawing)
{
    if (drawing.stamps.empty())
        return;
    if (m_stampDot != drawing.stampDot) {
        m_stampDot = drawing.stampDot;
        m_stamps = {};
    }
    for (const auto& stamp : drawing.stamps) {
        auto& image = m_stamps[size_t(stamp.art)];
        if (image.isNull())
            image = BuddyPictures::stamp(stamp.art, m_stampDot);
        setOpacity(painter, stamp.opacity);
        painter.drawImage(stamp.corner, image);
    }
    setOpacity(painter, BuddyDrawing::opaque);
}

} // namespace pobblewig
