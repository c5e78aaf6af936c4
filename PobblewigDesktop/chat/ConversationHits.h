#pragma once

#include "PobblewigDesktop/chat/ConversationRow.h"

#include <QListView>

namespace pobblewig {

class ConversationModel;
class MessageDelegate;
class MessageLayout;
class MessageLayouts;

/// A place in the text of a row.
struct TextPlace {
    QPersistentModelIndex row;
    qsizetype position = 0;
};

/// What of the conversation is under a point of the view.
class ConversationHits {
public:
    /// All arguments must outlive this object.
    ConversationHits(const QListView& view, const ConversationModel& model, MessageLayouts& layouts,
        const MessageDelegate& delegate)
        : m_view(view)
        , m_model(model)
        , m_layouts(layouts)
        , m_delegate(delegate)
    {
    }

    /// The row under the point, unless it is the title of a day.
    QModelIndex messageAt(const QPoint& point) const;

    /// The place in this row that is closest to the point.
    TextPlace placeIn(const QModelIndex& row, const QPoint& point) const;

    /// The link, or an empty text.
    QString linkAt(const QPoint& point) const;

    /// The code whose copy button is there, or an empty text.
    QString codeAt(const QPoint& point) const;

    /// The id of the proposal whose card offers there to undo, or an empty text.
    QString undoAt(const QPoint& point) const;

    /// Whether a click does something.
    bool isButtonAt(const QPoint& point) const;

private:
    const ConversationRow& rowOf(const QModelIndex& index) const;
    QPointF topLeft(const QModelIndex& index) const;
    /// The point within the text of the row.
    QPointF textPoint(const QModelIndex& index, const QPoint& point) const;

    const QListView& m_view;
    const ConversationModel& m_model;
    MessageLayouts& m_layouts;
    const MessageDelegate& m_delegate;
};

} // namespace pobblewig
