#pragma once

#include "PobblewigDesktop/chat/ConversationRow.h"
#include "PobblewigDesktop/chat/MessageLayout.h"

#include <map>
#include <optional>

namespace pobblewig {

class ConversationModel;

/// The layouts of all rows, for one font and one width of the view.
class MessageLayouts {
public:
    /// Of text around a message, and of the columns that messages stand in.
    struct Measure {
        QFont font;
        QFont captionFont;
        int viewWidth = 0;
        /// Assistant text and the room for bubbles.
        int columnLeft = 0;
        int columnWidth = 0;
        int bubbleTextWidth = 0;
    };

    const Measure& measure() const { return m_measure; }

    /// Lays out everything anew if this changes something.
    void setMeasure(const QFont& font, int viewWidth);

    /// The row's layout with its present text, which may not be laid out to its end.
    MessageLayout& layout(const ConversationRow& row);

    /// Lays out some of what still waits, in about 3 ms: from the given row on and then upwards
    /// from it. Returns whether nothing waits any more.
    bool layOutSlice(const ConversationModel& model, int firstRow);

    /// Drops what no row shows any more.
    void retain(const ConversationModel& model);

private:
    MessageLayout::Shape shapeFor(const ConversationRow& row) const;

    Measure m_measure;
    std::map<QUuid, MessageLayout> m_messages;
    /// Of the reply in progress; the message that it becomes takes it over.
    std::optional<MessageLayout> m_reply;
};

} // namespace pobblewig
