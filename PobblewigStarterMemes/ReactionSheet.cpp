#include "PobblewigStarterMemes/ReactionSheet.h"

#include "PobblewigStarterMemes/Reaction.h"

#include <QPainter>
#include <QStringList>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int pictureWidth = 128;
constexpr int pictureHeight = pictureWidth * Canvas::height / Canvas::width;
constexpr int margin = 8;
constexpr int labelHeight = 18;
constexpr int shots = 4;
constexpr QSize entrySize(
    shots*(pictureWidth + margin) + margin, pictureHeight + labelHeight + 2 * margin);

struct Ground {
    QColor color;
    QColor text;
};
const std::array grounds { Ground { 0xfbf8f4, 0x2b2523 }, Ground { 0x1e1b1a, 0xefe9e4 } };

QString label(const Reaction& reaction)
{
    const auto tags = reaction.tags();
    return QStringLiteral("%1 (%2)").arg(QLatin1String(reaction.name),
        QStringList(tags.begin(), tags.end()).join(QStringLiteral(", ")));
}

void paintEntry(QPainter& painter, QPoint corner, const Reaction& reaction)
{
    const auto film = reaction.draw();
    const auto shown = std::min(int(film.size()), shots);
    auto place = corner + QPoint(margin, margin);
    painter.drawText(QRect(place, QSize(entrySize.width() - margin, labelHeight)), label(reaction));
    place.ry() += labelHeight;
    for (int shot = 0; shot < shown; ++shot) {
        const auto& canvas =
            film[(film.size() - 1) * size_t(shot) / size_t(std::max(1, shown - 1))].canvas;
        painter.drawImage(QRect(place, QSize(pictureWidth, pictureHeight)), canvas.picture());
        place.rx() += pictureWidth + margin;
    }
}

} // namespace

QImage reactionSheet()
{
    const auto reactions = Reaction::all();
    QImage sheet(entrySize.width() * int(grounds.size()),
        entrySize.height() * int(reactions.size()), QImage::Format_RGB32);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int column = 0; column < int(grounds.size()); ++column) {
        const auto& ground = grounds[size_t(column)];
        painter.fillRect(
            column * entrySize.width(), 0, entrySize.width(), sheet.height(), ground.color);
        painter.setPen(ground.text);
        for (int row = 0; row < int(reactions.size()); ++row)
            paintEntry(painter, { column * entrySize.width(), row * entrySize.height() },
                reactions[size_t(row)]);
    }
    return sheet;
}

} // namespace pobblewig
