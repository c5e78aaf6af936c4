#pragma once

#include "PobblewigDesktop/chat/ConversationRow.h"
#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QFont>
#include <QRectF>

class QPainter;

namespace pobblewig {

/// Draws what stands around the text of a card: its surface, its symbol, and the line below the
/// text with the outcome and what can still be done. Cards that are joined look like one.
class CardPainter {
public:
    /// From each edge of the surface.
    static constexpr int inset = 12;
    static constexpr int iconRoom = 26;
    /// Between two joined cards.
    static constexpr int joint = 8;

    /// Where "Undo" stands on the line below the text; null if nothing can be undone.
    static QRectF undoPlace(const ConversationRow& row, const QRectF& footer, const QFont& font);

    CardPainter(QPainter& painter, const Palette& palette, const ConversationRow& row)
        : m_painter(painter)
        , m_palette(palette)
        , m_row(row)
    {
    }

    void paintSurface(const QRectF& surface) const;

    /// `line` is the first line of the text.
    void paintSymbol(const QRectF& surface, const QRectF& line) const;
    void paintFooter(const QRectF& footer, const QFont& font) const;

private:
    QPainter& m_painter;
    const Palette& m_palette;
    const ConversationRow& m_row;
};

} // namespace pobblewig
