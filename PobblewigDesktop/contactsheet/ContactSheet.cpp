#include "PobblewigDesktop/contactsheet/ContactSheet.h"

#include "PobblewigDesktop/buddy/BuddyPainter.h"
#include "PobblewigDesktop/contactsheet/AnimatedPNG.h"
#include "PobblewigDesktop/contactsheet/BuddyScenes.h"
#include "PobblewigDesktop/contactsheet/PanelScenes.h"

#include "buddy/BuddyArtist.h"

#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <deque>
#include <numeric>
#include <set>

namespace pobblewig {

namespace {

constexpr int margin = 8;
constexpr int captionWidth = 130;
constexpr int captionHeight = 22;
constexpr int posterColumns = 4;
constexpr int windowsWidth = 2500;
const QColor paper(251, 248, 244);
const QColor bright(226, 232, 238);
const QColor dark(38, 42, 50);

/// Everything that it takes to show frames of one sprite on one background.
class Studio {
public:
    Studio(const MascotSprite& sprite, const QColor& background, double ratio)
        : m_artist(sprite)
        , m_background(background)
        , m_ratio(ratio)
    {
        const auto isDark = background.lightness() < 128;
        m_painter.setPalette(Theme::palette(isDark ? ColorScheme::dark : ColorScheme::light, {}));
        m_painter.setFont({}, ratio);
    }

    /// What the frame needs, in points.
    QSize size(const BuddyFrame& frame) { return canvas(frame).size() / m_ratio; }

    /// With the feet in the middle of the lower edge. The size is in points.
    QImage picture(const BuddyFrame& frame, QSize size)
    {
        QImage image(size * m_ratio, QImage::Format_RGB32);
        image.fill(m_background);
        const auto area = canvas(frame);
        BuddyDrawing drawing;
        m_artist.draw(frame, area, { pill(frame) }, drawing);
        QPainter painter(&image);
        const auto rest = image.size() - area.size();
        painter.translate(QPoint(rest.width() / 2, rest.height()));
        m_painter.paint(painter, drawing);
        return image;
    }

private:
    QSize pill(const BuddyFrame& frame)
    {
        return frame.badge ? m_painter.pillSize(*frame.badge) : QSize();
    }

    BuddyCanvas canvas(const BuddyFrame& frame)
    {
        auto canvas = BuddyCanvas::ofScale(1, m_ratio);
        canvas.room = BuddyArtist::room(frame, canvas.cell, { pill(frame) });
        return canvas;
    }

    BuddyArtist m_artist;
    BuddyPainter m_painter;
    QColor m_background;
    double m_ratio;
};

/// In all the colours that it can have.
std::vector<MascotSprite> sprites(const Mascot& mascot)
{
    const auto sprite = MascotSprite::sprite(mascot);
    if (mascot.offer == Mascot::Offer::nobody)
        return { sprite };
    std::vector<MascotSprite> sprites;
    for (const auto& scheme : mascot.schemes)
        sprites.push_back(sprite.recolored(scheme));
    return sprites;
}

/// Every mascot with a shape of its own; those that nobody can choose come last.
std::vector<MascotSprite> sprites()
{
    std::vector<Mascot> mascots(Mascot::all().begin(), Mascot::all().end());
    std::set<const MascotShape*> known;
    std::erase_if(mascots, [&](const auto& mascot) { return !known.insert(mascot.shape).second; });
    std::ranges::stable_partition(
        mascots, [](const auto& mascot) { return mascot.offer != Mascot::Offer::nobody; });
    std::vector<MascotSprite> all;
    for (const auto& mascot : mascots)
        std::ranges::move(sprites(mascot), std::back_inserter(all));
    return all;
}

/// The studios for all sprites, on bright and on dark in turn.
std::deque<Studio> studios(double ratio)
{
    std::deque<Studio> studios;
    for (const auto& sprite : sprites())
        studios.emplace_back(sprite, studios.size() % 2 == 0 ? bright : dark, ratio);
    return studios;
}

struct Row {
    QString caption;
    BuddyFrame frame;
    QSize size;
};

std::vector<Row> rowsOfAllScenes()
{
    Studio studio(MascotSprite::forID(u"mouse"), paper, 1);
    std::vector<Row> rows;
    for (const auto& scene : BuddyScenes::all()) {
        for (const auto& frame : BuddyScenes::frames(scene))
            rows.push_back({ scene.name, frame, studio.size(frame) });
    }
    return rows;
}

QSize largest(const std::vector<Row>& rows)
{
    QSize size;
    for (const auto& row : rows)
        size = size.expandedTo(row.size);
    return size;
}

/// In the middle of a scene most is to be seen.
BuddyFrame best(const std::vector<BuddyFrame>& frames)
{
    return frames[frames.size() / 2];
}

/// One moment of each scene, each by another studio.
std::vector<Row> tilesOfAllScenes(std::deque<Studio>& studios)
{
    std::vector<Row> tiles;
    for (const auto& scene : BuddyScenes::all()) {
        auto& studio = studios[tiles.size() % studios.size()];
        const auto frame = best(BuddyScenes::frames(scene));
        tiles.push_back({ scene.name, frame, studio.size(frame) });
    }
    return tiles;
}

/// The heights of the rows of a poster.
std::vector<int> heightsOf(const std::vector<Row>& tiles)
{
    std::vector<int> heights((tiles.size() + posterColumns - 1) / posterColumns, 0);
    for (size_t i = 0; i < tiles.size(); ++i) {
        auto& height = heights[i / posterColumns];
        height = qMax(height, tiles[i].size.height() + margin);
    }
    return heights;
}

/// A window on its place in a sheet.
struct Tile {
    QString caption;
    QImage picture;
    QPoint corner = {};

    QSize size() const { return picture.deviceIndependentSize().toSize(); }
};

/// Puts them side by side, in rows. Returns the size of the sheet.
QSize arrange(std::vector<Tile>& tiles)
{
    QRect all;
    QPoint corner;
    for (auto& tile : tiles) {
        if (corner.x() + tile.size().width() > windowsWidth)
            corner = QPoint(0, all.height());
        tile.corner = corner;
        const auto taken = tile.size() + QSize(margin, captionHeight + margin);
        all |= QRect(corner, taken);
        corner.rx() += taken.width();
    }
    return all.size();
}

QImage blank(QSize size, double ratio)
{
    QImage image(size * ratio, QImage::Format_RGB32);
    image.fill(paper);
    return image;
}

} // namespace

QImage ContactSheet::sheet(double ratio)
{
    auto all = studios(ratio);
    const auto rows = rowsOfAllScenes();
    const auto column = largest(rows).width() + margin;
    auto height = margin;
    for (const auto& row : rows)
        height += row.size.height() + margin;

    auto image = blank({ captionWidth + column * int(all.size()), height }, ratio);
    QPainter painter(&image);
    painter.scale(ratio, ratio);
    auto top = margin;
    for (const auto& row : rows) {
        painter.drawText(QRect(margin, top, captionWidth - margin, row.size.height()),
            Qt::AlignVCenter | Qt::TextWordWrap, row.caption);
        auto left = captionWidth;
        for (auto& studio : all) {
            const QRect place(left, top, column - margin / 2, row.size.height());
            painter.drawImage(place, studio.picture(row.frame, place.size()));
            left += column;
        }
        top += row.size.height() + margin;
    }
    return image;
}

QImage ContactSheet::poster(double ratio)
{
    auto all = studios(ratio);
    const auto tiles = tilesOfAllScenes(all);
    const auto heights = heightsOf(tiles);
    const auto width = largest(tiles).width();
    const auto step = margin + captionHeight;
    const auto height =
        std::accumulate(heights.begin(), heights.end(), margin + step * int(heights.size()));

    auto image = blank({ margin + posterColumns * (width + margin), height }, ratio);
    QPainter painter(&image);
    painter.scale(ratio, ratio);
    QPoint corner(margin, margin);
    for (size_t i = 0; i < tiles.size(); ++i) {
        const QRect place(corner, QSize(width, heights[i / posterColumns]));
        painter.drawImage(place, all[i % all.size()].picture(tiles[i].frame, place.size()));
        const QRect caption(place.left(), place.bottom() + 1, width, captionHeight);
        painter.drawText(caption, Qt::AlignCenter, tiles[i].caption);
        const auto isLast = i % posterColumns == posterColumns - 1;
        corner = isLast ? QPoint(margin, caption.bottom() + 1 + margin)
                        : corner + QPoint(width + margin, 0);
    }
    return image;
}

QImage ContactSheet::windows(const std::vector<WindowScene>& scenes)
{
    std::vector<Tile> tiles;
    for (const auto& scene : scenes) {
        for (const auto scheme : { ColorScheme::light, ColorScheme::dark })
            tiles.push_back({ scene.name, scene.picture(scheme) });
    }
    const auto size = arrange(tiles);
    const auto ratio = qGuiApp->devicePixelRatio();
    auto image = blank(size, ratio);
    QPainter painter(&image);
    painter.scale(ratio, ratio);
    for (const auto& tile : tiles) {
        const QRect caption(tile.corner, QSize(tile.size().width(), captionHeight));
        painter.drawText(caption, Qt::AlignCenter, tile.caption);
        painter.drawImage(tile.corner + QPoint(0, captionHeight), tile.picture);
    }
    return image;
}

QByteArray ContactSheet::film(double ratio)
{
    constexpr int framesASecond = 20;
    const auto& axolotl = Mascot::userFacing(u"axolotl");
    const auto& scheme = MascotColorScheme::forID(u"pink", axolotl);
    Studio studio(MascotSprite::sprite(axolotl).recolored(scheme), bright, ratio);
    AnimatedPNG film;
    for (const auto& frame : BuddyScenes::film(framesASecond))
        film.append(studio.picture(frame, { 240, 216 }), 1000 / framesASecond);
    return film.encoded().value_or(QByteArray());
}

} // namespace pobblewig
