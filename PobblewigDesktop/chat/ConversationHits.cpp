#include "PobblewigDesktop/chat/ConversationHits.h"

#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/MessageDelegate.h"
#include "PobblewigDesktop/chat/MessageLayouts.h"

namespace pobblewig {

QModelIndex ConversationHits::messageAt(const QPoint& point) const
{
    const auto index = m_view.indexAt(point);
    const auto isDay = index.isValid() && rowOf(index).kind == ConversationRow::Kind::day;
    return isDay ? QModelIndex() : index;
}

TextPlace ConversationHits::placeIn(const QModelIndex& row, const QPoint& point) const
{
    return { row, m_delegate.positionAt(rowOf(row), topLeft(row), point) };
}

QString ConversationHits::linkAt(const QPoint& point) const
{
    const auto index = messageAt(point);
    if (!index.isValid())
        return {};
    return m_layouts.layout(rowOf(index)).linkAt(textPoint(index, point));
}

QString ConversationHits::codeAt(const QPoint& point) const
{
    const auto index = messageAt(point);
    if (!index.isValid())
        return {};
    auto& layout = m_layouts.layout(rowOf(index));
    const auto code = layout.copyButtonAt(textPoint(index, point));
    return code ? layout.text().mid(code->start, code->length) : QString();
}

QString ConversationHits::undoAt(const QPoint& point) const
{
    const auto index = messageAt(point);
    if (!index.isValid() || !m_delegate.undoPlace(rowOf(index), topLeft(index)).contains(point))
        return {};
    return rowOf(index).card.proposalId;
}

bool ConversationHits::isButtonAt(const QPoint& point) const
{
    return !linkAt(point).isEmpty() || !codeAt(point).isEmpty() || !undoAt(point).isEmpty();
}

const ConversationRow& ConversationHits::rowOf(const QModelIndex& index) const
{
    return m_model.row(index.row());
}

QPointF ConversationHits::topLeft(const QModelIndex& index) const
{
    return m_view.visualRect(index).topLeft();
}

QPointF ConversationHits::textPoint(const QModelIndex& index, const QPoint& point) const
{
    return point - m_delegate.textTop(rowOf(index), topLeft(index));
}

} // namespace pobblewig
