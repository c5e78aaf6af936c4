#pragma once

#include "PobblewigDesktop/chat/ConversationMarks.h"
#include "PobblewigDesktop/chat/ConversationRow.h"
#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QAbstractItemDelegate>

namespace pobblewig {

class ConversationModel;
class MessageLayouts;

/// Draws the rows of the conversation. The cost of a row does not depend on the length of its text.
class MessageDelegate : public QAbstractItemDelegate {
    Q_OBJECT

public:
    /// The places of a row's parts. The line below the text tells when it was written.
    struct Boxes {
        QRectF text;
        QRectF bubble;
        QRectF footer;
        int height = 0;
    };

    MessageDelegate(const ConversationModel& model, MessageLayouts& layouts,
        const ConversationMarks& marks, QObject* parent = nullptr);

    const Palette& palette() const { return m_palette; }
    Boxes boxes(const ConversationRow& row, const QPointF& topLeft) const;

    /// Returns where the text of a row at `topLeft` begins.
    QPointF textTop(const ConversationRow& row, const QPointF& topLeft) const;

    /// Returns the place of the line below the text, for a row at `topLeft`.
    QRectF footer(const ConversationRow& row, const QPointF& topLeft) const;

    /// Returns where a card at `topLeft` offers to undo; null if it does not.
    QRectF undoPlace(const ConversationRow& row, const QPointF& topLeft) const;

    /// Returns where the line with this position of the text begins, for a row at `topLeft`.
    int lineTop(const ConversationRow& row, const QPointF& topLeft, qsizetype position) const;
    qsizetype positionAt(
        const ConversationRow& row, const QPointF& topLeft, const QPointF& point) const;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;

    void setPalette(const Palette& palette) { m_palette = palette; }

private:
    void paintDay(QPainter& painter, const ConversationRow& row, const QRectF& box) const;
    void paintMessage(QPainter& painter, const ConversationRow& row, const Boxes& boxes,
        const QRectF& clip) const;
    void paintCard(QPainter& painter, const ConversationRow& row, const Boxes& boxes) const;
    void paintFooter(QPainter& painter, const ConversationRow& row, const QRectF& place) const;
    Boxes cardBoxes(const ConversationRow& row, const QRectF& column) const;
    QRectF footerLine(const ConversationRow& row, const Boxes& boxes) const;
    void paintCaret(QPainter& painter, const ConversationRow& row, const QPointF& origin) const;

    const ConversationModel& m_model;
    MessageLayouts& m_layouts;
    const ConversationMarks& m_marks;
    Palette m_palette;
};

} // namespace pobblewig
