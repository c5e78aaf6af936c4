#include "PobblewigDesktop/comingup/ComingUpDelegate.h"

#include "PobblewigDesktop/comingup/ComingUpModel.h"
#include "PobblewigDesktop/controls/Mirroring.h"

#include <QPainter>
#include <QStyle>

namespace pobblewig {

namespace {

constexpr int padding = 8;
constexpr int barWidth = 4;
constexpr int gap = 8;
constexpr qreal corner = 8;

QFont detailFont(QFont font)
{
    font.setPointSizeF(std::max(6.0, font.pointSizeF() - 1.5));
    return font;
}

QFont headingFont(QFont font)
{
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont titleFont(QFont font, bool isDone)
{
    font.setStrikeOut(isDone);
    return font;
}

/// One line of text, cut to its place.
void drawLine(QPainter& painter, const QRect& place, const QString& text, int flags)
{
    const auto line = painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width());
    painter.drawText(place, flags | Qt::TextSingleLine, isolated(line));
}

} // namespace

void ComingUpDelegate::setTheme(const Palette& palette)
{
    m_palette = palette;
    m_colors.clear();
    for (const auto& id : Theme::accentIDs())
        m_colors.append(Theme::palette(palette.scheme, id).accent);
}

void ComingUpDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setLayoutDirection(option.direction);
    if (index.data(ComingUpModel::isHeadingRole).toBool())
        paintHeading(*painter, option, index);
    else
        paintEntry(*painter, option, index);
    painter->restore();
}

QSize ComingUpDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto line = QFontMetrics(option.font).height();
    if (index.data(ComingUpModel::isHeadingRole).toBool())
        return { 0, line + 2 * padding + (index.row() > 0 ? padding : 0) };
    return { 0, line + QFontMetrics(detailFont(option.font)).height() + 2 * padding };
}

void ComingUpDelegate::paintHeading(
    QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    painter.setFont(headingFont(option.font));
    painter.setPen(m_palette.text);
    drawLine(painter, option.rect.adjusted(padding, padding, -padding, -padding),
        index.data().toString(), Qt::AlignLeading | Qt::AlignBottom);
}

void ComingUpDelegate::paintEntry(
    QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    painter.setPen(Qt::NoPen);
    if (option.state & QStyle::State_Selected) {
        painter.setBrush(m_palette.bubble);
        painter.drawRoundedRect(option.rect, corner, corner);
    }
    const auto box = option.rect.adjusted(padding, padding, -padding, -padding);
    const auto mirroredInBox = [&](const QRect& place) {
        return QStyle::visualRect(option.direction, box, place);
    };
    painter.setBrush(m_colors.value(index.data(ComingUpModel::colorRole).toInt()));
    painter.drawRoundedRect(mirroredInBox({ box.topLeft(), QSize(barWidth, box.height()) }),
        barWidth / 2.0, barWidth / 2.0);

    const auto words = box.adjusted(barWidth + gap, 0, 0, 0);
    const auto time = index.data(ComingUpModel::timeRole).toString();
    const auto isDone = index.data(ComingUpModel::isDoneRole).toBool();
    const auto timeWidth = time.isEmpty() ? 0 : QFontMetrics(option.font).horizontalAdvance(time);
    painter.setFont(option.font);
    painter.setPen(m_palette.muted);
    drawLine(painter, mirroredInBox(words), time, Qt::AlignTrailing | Qt::AlignTop);
    painter.setFont(detailFont(option.font));
    drawLine(painter, mirroredInBox(words), index.data(ComingUpModel::detailRole).toString(),
        Qt::AlignLeading | Qt::AlignBottom);
    painter.setFont(titleFont(option.font, isDone));
    painter.setPen(isDone ? m_palette.muted : m_palette.text);
    drawLine(painter, mirroredInBox(words.adjusted(0, 0, -timeWidth - gap, 0)),
        index.data().toString(), Qt::AlignLeading | Qt::AlignTop);
}

} // namespace pobblewig
