#include "PobblewigDesktop/memory/EntryDelegate.h"

#include "PobblewigDesktop/controls/Mirroring.h"
#include "PobblewigDesktop/memory/EntryModel.h"

#include <QPainter>

namespace pobblewig {

namespace {

constexpr int padding = 6;
constexpr qreal corner = 8;

QFont detailFont(QFont font)
{
    font.setPointSizeF(std::max(6.0, font.pointSizeF() - 1.5));
    return font;
}

} // namespace

void EntryDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    if (option.state & QStyle::State_Selected) {
        painter->setBrush(m_palette.bubble);
        painter->drawRoundedRect(option.rect, corner, corner);
    }
    const auto box = option.rect.adjusted(padding, padding, -padding, -padding);
    const auto drawLine = [&](const QFont& font, const QColor& color, int flags, int role) {
        const auto text = index.data(role).toString().simplified();
        painter->setFont(font);
        painter->setPen(color);
        const QFontMetrics metrics(font);
        painter->drawText(box, flags | Qt::TextSingleLine,
            isolated(metrics.elidedText(text, Qt::ElideRight, box.width())));
    };
    painter->setLayoutDirection(option.direction);
    drawLine(option.font, m_palette.text, Qt::AlignLeft | Qt::AlignTop, Qt::DisplayRole);
    drawLine(detailFont(option.font), m_palette.muted, Qt::AlignLeft | Qt::AlignBottom,
        EntryModel::detailRole);
    painter->restore();
}

QSize EntryDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const auto lines =
        QFontMetrics(option.font).height() + QFontMetrics(detailFont(option.font)).height();
    return { 0, lines + 2 * padding + 2 };
}

} // namespace pobblewig
