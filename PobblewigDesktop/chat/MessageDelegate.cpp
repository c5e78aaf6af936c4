#include "PobblewigDesktop/chat/MessageDelegate.h"

#include "PobblewigDesktop/chat/CardPainter.h"
#include "PobblewigDesktop/chat/ConversationLogic.h"
#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/MessageLayouts.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QWidget>

#include <cmath>

namespace pobblewig {

namespace {

constexpr qreal bubbleCorner = 10;
constexpr QSizeF bubblePadding(12, 8);
constexpr int footerGap = 4;
constexpr int footerIcon = 14;
constexpr int rowGap = 16;
constexpr int dayGap = 12;
constexpr qreal caretWidth = 6;
constexpr qreal caretGap = 3;

bool hasFooter(const ConversationRow& row)
{
    return row.kind == ConversationRow::Kind::user || row.kind == ConversationRow::Kind::assistant
        || row.kind == ConversationRow::Kind::proactive;
}

/// What is told in passing, and what is not to be.
bool isQuiet(const ConversationRow& row)
{
    return row.kind == ConversationRow::Kind::note
        || (row.kind == ConversationRow::Kind::card
            && row.card.outcome != ProposalCard::Outcome::done);
}

QString footerText(const ConversationRow& row)
{
    const auto moment = ConversationLogic::moment(row);
    if (row.isStopped)
        return MessageDelegate::tr("%1, stopped").arg(moment);
    if (row.isUnanswered)
        return MessageDelegate::tr("%1, not answered").arg(moment);
    return row.isCutOff ? MessageDelegate::tr("%1, cut off").arg(moment) : moment;
}

QRectF visiblePart(const QStyleOptionViewItem& option)
{
    return option.widget ? option.rect & option.widget->rect() : option.rect;
}

std::optional<Icons::Name> footerSymbol(const ConversationRow& row)
{
    if (row.kind == ConversationRow::Kind::proactive)
        return Icons::Name::clock;
    return row.hadImage ? std::optional(Icons::Name::screen) : std::nullopt;
}

} // namespace

MessageDelegate::MessageDelegate(const ConversationModel& model, MessageLayouts& layouts,
    const ConversationMarks& marks, QObject* parent)
    : QAbstractItemDelegate(parent)
    , m_model(model)
    , m_layouts(layouts)
    , m_marks(marks)
{
}

MessageDelegate::Boxes MessageDelegate::boxes(
    const ConversationRow& row, const QPointF& topLeft) const
{
    const auto& measure = m_layouts.measure();
    const auto footerHeight = QFontMetrics(measure.captionFont).height();
    const QRectF column(topLeft.x() + measure.columnLeft, topLeft.y(), measure.columnWidth, 0);
    if (row.kind == ConversationRow::Kind::day)
        return { .text = column.adjusted(0, 0, 0, footerHeight), .height = footerHeight + dayGap };

    if (row.kind == ConversationRow::Kind::card)
        return cardBoxes(row, column);
    const auto& layout = m_layouts.layout(row);
    Boxes boxes { .text = QRectF(column.topLeft(), QSizeF(column.width(), layout.height())) };
    if (row.kind == ConversationRow::Kind::user) {
        boxes.text.setWidth(layout.contentWidth());
        boxes.text.moveTop(column.top() + bubblePadding.height());
        if (measure.isMirrored)
            boxes.text.moveLeft(column.left() + bubblePadding.width());
        else
            boxes.text.moveRight(column.right() - bubblePadding.width());
        boxes.bubble = boxes.text.adjusted(-bubblePadding.width(), -bubblePadding.height(),
            bubblePadding.width(), bubblePadding.height());
    } else if (row.kind == ConversationRow::Kind::note) {
        const auto inset = (measure.columnWidth - layout.width()) / 2;
        boxes.text.adjust(inset, 0, -inset, 0);
    }
    const auto bottom = boxes.bubble.isNull() ? boxes.text.bottom() : boxes.bubble.bottom();
    boxes.footer = QRectF(column.left(), bottom + footerGap, column.width(),
        hasFooter(row) ? footerHeight : -footerGap);
    boxes.height = static_cast<int>(std::ceil(boxes.footer.bottom() - topLeft.y())) + rowGap;
    return boxes;
}

auto MessageDelegate::cardBoxes(const ConversationRow& row, const QRectF& column) const -> Boxes
{
    const auto& layout = m_layouts.layout(row);
    const auto footerHeight = QFontMetrics(m_layouts.measure().captionFont).height();
    const auto above = row.isFirstOfCard ? CardPainter::inset : CardPainter::joint;
    const auto below = row.isLastOfCard ? CardPainter::inset : 0;
    const QPointF origin(
        column.left() + CardPainter::inset + CardPainter::iconRoom, column.top() + above);
    Boxes boxes { .text = QRectF(origin, QSizeF(layout.width(), layout.height())) };
    boxes.footer = QRectF(origin.x(), boxes.text.bottom() + 2, layout.width(), footerHeight);
    const auto height = int(std::ceil(boxes.footer.bottom() + below - column.top()));
    boxes.bubble = QRectF(column.topLeft(), QSizeF(column.width(), height));
    boxes.height = height + (row.isLastOfCard ? rowGap : 0);
    return boxes;
}

QRectF MessageDelegate::undoPlace(const ConversationRow& row, const QPointF& topLeft) const
{
    if (!row.card.canBeUndone)
        return {};
    return CardPainter::undoPlace(row, boxes(row, topLeft).footer, m_layouts.measure().captionFont);
}

int MessageDelegate::lineTop(
    const ConversationRow& row, const QPointF& topLeft, qsizetype position) const
{
    if (row.kind == ConversationRow::Kind::day)
        return static_cast<int>(topLeft.y());
    const auto text = boxes(row, topLeft).text;
    return static_cast<int>(text.top() + m_layouts.layout(row).cursorAt(position).top());
}

qsizetype MessageDelegate::positionAt(
    const ConversationRow& row, const QPointF& topLeft, const QPointF& point) const
{
    if (row.kind == ConversationRow::Kind::day)
        return 0;
    return m_layouts.layout(row).positionAt(point - textTop(row, topLeft));
}

QRectF MessageDelegate::footer(const ConversationRow& row, const QPointF& topLeft) const
{
    return footerLine(row, boxes(row, topLeft));
}

QRectF MessageDelegate::footerLine(const ConversationRow& row, const Boxes& boxes) const
{
    const QFontMetricsF metrics(m_layouts.measure().captionFont);
    const auto symbolRoom = footerSymbol(row) ? footerIcon + footerGap : 0;
    auto line = boxes.footer;
    line.setWidth(symbolRoom + metrics.horizontalAdvance(footerText(row)) + 1);
    const auto isUsers = row.kind == ConversationRow::Kind::user;
    if (isUsers != m_layouts.measure().isMirrored)
        line.moveRight(boxes.footer.right());
    return line;
}

QPointF MessageDelegate::textTop(const ConversationRow& row, const QPointF& topLeft) const
{
    return boxes(row, topLeft).text.topLeft();
}

QSize MessageDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const
{
    return { 1, boxes(m_model.row(index.row()), {}).height };
}

void MessageDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto& row = m_model.row(index.row());
    const auto boxes = this->boxes(row, option.rect.topLeft());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (row.kind == ConversationRow::Kind::day)
        paintDay(*painter, row, boxes.text);
    else
        paintMessage(*painter, row, boxes, visiblePart(option));
    constexpr auto focused = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
    if ((option.state & focused) == focused) {
        painter->setPen(QPen(m_palette.accent, 1.5));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(
            QRectF(option.rect).adjusted(6, -5, -6, 5 - rowGap), bubbleCorner, bubbleCorner);
    }
    painter->restore();
}

void MessageDelegate::paintDay(
    QPainter& painter, const ConversationRow& row, const QRectF& box) const
{
    auto font = m_layouts.measure().captionFont;
    font.setWeight(QFont::DemiBold);
    const auto half = QFontMetricsF(font).horizontalAdvance(row.text) / 2 + dayGap;
    const auto y = std::floor(box.center().y()) + 0.5;
    painter.setPen(m_palette.hairline);
    painter.drawLine(QPointF(box.left(), y), QPointF(box.center().x() - half, y));
    painter.drawLine(QPointF(box.center().x() + half, y), QPointF(box.right(), y));
    painter.setFont(font);
    painter.setPen(m_palette.muted);
    painter.drawText(box, Qt::AlignCenter, row.text);
}

void MessageDelegate::paintMessage(
    QPainter& painter, const ConversationRow& row, const Boxes& boxes, const QRectF& clip) const
{
    if (row.kind == ConversationRow::Kind::card) {
        paintCard(painter, row, boxes);
    } else if (!boxes.bubble.isNull()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_palette.bubble);
        painter.drawRoundedRect(boxes.bubble, bubbleCorner, bubbleCorner);
    }
    const MessageLayout::Ink ink { .text = isQuiet(row) ? m_palette.muted : m_palette.text,
        .muted = m_palette.muted,
        .link = m_palette.link,
        .code = m_palette.code,
        .line = m_palette.hairline,
        .selection = m_palette.selection,
        .match = m_palette.match,
        .currentMatch = m_palette.currentMatch };
    m_layouts.layout(row).draw(painter, boxes.text.topLeft(), clip, ink, m_marks.of(row.id));
    if (row.kind == ConversationRow::Kind::preview)
        paintCaret(painter, row, boxes.text.topLeft());
    if (hasFooter(row))
        paintFooter(painter, row, footerLine(row, boxes));
}

void MessageDelegate::paintCard(
    QPainter& painter, const ConversationRow& row, const Boxes& boxes) const
{
    const CardPainter card(painter, m_palette, row);
    card.paintSurface(boxes.bubble);
    const auto line = m_layouts.layout(row).cursorAt(0).translated(boxes.text.topLeft());
    card.paintSymbol(boxes.bubble, line);
    card.paintFooter(boxes.footer, m_layouts.measure().captionFont);
}

void MessageDelegate::paintFooter(
    QPainter& painter, const ConversationRow& row, const QRectF& place) const
{
    const auto text = footerText(row);
    const auto symbol = footerSymbol(row);
    const auto& font = m_layouts.measure().captionFont;
    const auto symbolRoom = symbol ? footerIcon + footerGap : 0;
    if (symbol) {
        const auto picture = Icons::pixmap(
            *symbol, m_palette.muted, footerIcon, painter.device()->devicePixelRatioF());
        const auto y = std::round(place.center().y() - footerIcon / 2.0);
        painter.drawPixmap(QPointF(place.left(), y), picture);
    }
    painter.setFont(font);
    painter.setPen(m_palette.muted);
    painter.drawText(place.adjusted(symbolRoom, 0, 0, 0),
        Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter, text);
}

void MessageDelegate::paintCaret(
    QPainter& painter, const ConversationRow& row, const QPointF& origin) const
{
    auto& layout = m_layouts.layout(row);
    const auto cursor = layout.cursorAt(layout.text().size()).translated(origin);
    const auto side = std::round(cursor.height() * 0.18);
    const auto& segments = layout.segments();
    const auto growsLeftwards = !segments.empty() && segments.back().rightToLeft;
    const auto left =
        growsLeftwards ? cursor.left() - caretGap - caretWidth : cursor.left() + caretGap;
    const QRectF caret(left, cursor.top() + side, caretWidth, cursor.height() - 2 * side);
    auto color = m_palette.accent;
    color.setAlphaF(0.7F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(caret, 2, 2);
}

} // namespace pobblewig
