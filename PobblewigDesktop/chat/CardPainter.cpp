#include "PobblewigDesktop/chat/CardPainter.h"

#include "PobblewigDesktop/chat/ProposalCardLogic.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace pobblewig {

namespace {

constexpr qreal corner = 10;
constexpr int symbolSide = 18;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(CardPainter)
};

QFont undoFont(QFont font)
{
    font.setWeight(QFont::DemiBold);
    return font;
}

Icons::Name symbol(ProposalCard::Outcome outcome)
{
    switch (outcome) {
    case ProposalCard::Outcome::dismissed:
        return Icons::Name::close;
    case ProposalCard::Outcome::undone:
        return Icons::Name::undo;
    case ProposalCard::Outcome::waiting:
    case ProposalCard::Outcome::done:
        break;
    }
    return Icons::Name::check;
}

} // namespace

QRectF CardPainter::undoPlace(const ConversationRow& row, const QRectF& footer, const QFont& font)
{
    if (!row.card.canBeUndone)
        return {};
    auto place = footer;
    place.setLeft(
        place.right() - QFontMetricsF(undoFont(font)).horizontalAdvance(Texts::tr("Undo")));
    return place;
}

void CardPainter::paintSurface(const QRectF& surface) const
{
    // What is joined goes on beyond the edge.
    const auto shape = surface.adjusted(
        0.5, m_row.isFirstOfCard ? 0.5 : -2 * corner, -0.5, m_row.isLastOfCard ? -0.5 : 2 * corner);
    m_painter.save();
    m_painter.setClipRect(surface, Qt::IntersectClip);
    m_painter.setPen(m_palette.hairline);
    m_painter.setBrush(m_palette.surface);
    m_painter.drawRoundedRect(shape, corner, corner);
    m_painter.restore();
}

void CardPainter::paintSymbol(const QRectF& surface, const QRectF& line) const
{
    const auto isDone = m_row.card.outcome == ProposalCard::Outcome::done;
    const auto picture =
        Icons::pixmap(symbol(m_row.card.outcome), isDone ? m_palette.accent : m_palette.muted,
            symbolSide, m_painter.device()->devicePixelRatioF());
    const auto y = std::round(line.center().y() - symbolSide / 2.0);
    m_painter.drawPixmap(QPointF(surface.left() + inset, y), picture);
}

void CardPainter::paintFooter(const QRectF& footer, const QFont& font) const
{
    const auto told =
        QStringLiteral("%1, %2").arg(ProposalCardLogic::name(m_row.card.outcome), m_row.time);
    m_painter.setFont(font);
    m_painter.setPen(m_palette.muted);
    constexpr auto atLeft = Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter;
    m_painter.drawText(footer, atLeft, told);
    m_painter.setFont(undoFont(font));
    m_painter.setPen(m_palette.link);
    if (const auto place = undoPlace(m_row, footer, font); !place.isNull())
        m_painter.drawText(place, atLeft, Texts::tr("Undo"));
}

} // namespace pobblewig
