#include "PobblewigDesktop/chat/MessageLayouts.h"

#include "PobblewigDesktop/chat/CardPainter.h"
#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/TextColumn.h"

#include <QFontMetrics>

#include <algorithm>
#include <numeric>

namespace pobblewig {

namespace {

using Growth = MarkdownText::Growth;

constexpr int bubblePadding = 12;
constexpr int noteInset = 24;
constexpr qsizetype charactersPerSlice = 3000;
constexpr std::size_t messagesPerSlice = 30;

QFont captionFont(QFont font)
{
    font.setPointSizeF(std::max(6.0, font.pointSizeF() - 1.5));
    return font;
}

/// Blanks at the end of a reply are cut off when it is finished.
bool isSameText(const QString& written, const QString& finished)
{
    return !written.isEmpty() && (written.startsWith(finished) || finished.startsWith(written));
}

} // namespace

void MessageLayouts::setMeasure(const QFont& font, int viewWidth, Qt::LayoutDirection direction)
{
    m_measure.isMirrored = direction == Qt::RightToLeft;
    if (m_measure.viewWidth == viewWidth && m_measure.font == font)
        return;
    const auto longest = TextColumn::longest(QFontMetrics(font));
    const auto column = std::clamp(viewWidth - 2 * TextColumn::margin, 1, longest);
    m_measure = { .font = font,
        .captionFont = captionFont(font),
        .viewWidth = viewWidth,
        .columnLeft = (viewWidth - column) / 2,
        .columnWidth = column,
        .bubbleTextWidth = std::max(1, column * 85 / 100 - 2 * bubblePadding),
        .cardTextWidth = std::max(1, column - 2 * CardPainter::inset - CardPainter::iconRoom),
        .isMirrored = m_measure.isMirrored };
}

MessageLayout& MessageLayouts::layout(const ConversationRow& row)
{
    if (row.isReplyInProgress()) {
        if (!m_reply)
            m_reply.emplace(shapeFor(row));
        fit(*m_reply, row);
        m_reply->setText(
            row.text, row.kind == ConversationRow::Kind::preview ? Growth::growing : Growth::whole);
        return *m_reply;
    }
    const auto [place, isNew] = m_messages.try_emplace(row.id, shapeFor(row));
    const auto continuesReply = row.kind == ConversationRow::Kind::assistant && m_reply
        && isSameText(m_reply->source(), row.text);
    if (isNew && continuesReply)
        place->second = *std::exchange(m_reply, std::nullopt);
    fit(place->second, row);
    place->second.setText(row.text);
    return place->second;
}

void MessageLayouts::fit(MessageLayout& layout, const ConversationRow& row)
{
    if (auto dropped = layout.setShape(shapeFor(row)); !dropped.empty())
        m_outdated.push_back(std::move(dropped));
}

bool MessageLayouts::layOutSlice(const ConversationModel& model, int firstRow)
{
    std::vector<int> order(static_cast<std::size_t>(model.rowCount()));
    std::iota(order.begin(), order.end(), 0);
    std::rotate(order.begin(), order.begin() + firstRow, order.end());
    std::reverse(order.end() - firstRow, order.end());
    auto room = charactersPerSlice;
    for (const auto number : order) {
        if (model.row(number).kind == ConversationRow::Kind::day)
            continue;
        auto& waiting = layout(model.row(number));
        room -= waiting.layOut(room);
        if (!waiting.isComplete() || room <= 0)
            return false;
    }
    m_outdated.resize(m_outdated.size() - std::min(m_outdated.size(), messagesPerSlice));
    return m_outdated.empty();
}

void MessageLayouts::retain(const ConversationModel& model)
{
    std::erase_if(
        m_messages, [&model](const auto& entry) { return !model.rowOf(entry.first).has_value(); });
}

MessageLayout::Shape MessageLayouts::shapeFor(const ConversationRow& row) const
{
    using Alignment = MessageLayout::Alignment;
    const auto& measure = m_measure;
    switch (row.kind) {
    case ConversationRow::Kind::user:
        return { measure.font, qreal(measure.bubbleTextWidth), Alignment::snug };
    case ConversationRow::Kind::day:
    case ConversationRow::Kind::note:
        return { measure.captionFont, std::max<qreal>(1, measure.columnWidth - 2 * noteInset),
            Alignment::centred };
    case ConversationRow::Kind::card:
        return { measure.font, qreal(measure.cardTextWidth), Alignment::natural };
    default:
        return { measure.font, qreal(measure.columnWidth), Alignment::natural,
            MessageLayout::Markup::markdown };
    }
}

} // namespace pobblewig
