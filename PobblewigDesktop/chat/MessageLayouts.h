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
    /// The margins of text around a message, and of the columns that messages stand in.
    struct Measure {
        QFont font;
        QFont captionFont;
        int viewWidth = 0;
        /// The width of the assistant's text, and of the room for bubbles.
        int columnLeft = 0;
        int columnWidth = 0;
        int bubbleTextWidth = 0;
        int cardTextWidth = 0;
        /// The user's messages stand at the left, as those of others do elsewhere.
        bool isMirrored = false;
    };

    const Measure& measure() const { return m_measure; }

    /// Lays out everything anew if anything changes.
    void setMeasure(
        const QFont& font, int viewWidth, Qt::LayoutDirection direction = Qt::LeftToRight);

    /// Returns the row's layout with its present text, which may not be laid out to its end yet.
    MessageLayout& layout(const ConversationRow& row);

    /// Lays out for about 3 ms what still waits, first from the given row on and then upwards.
    /// Returns whether everything is done.
    bool layOutSlice(const ConversationModel& model, int firstRow);

    /// Drops the layouts that no row shows any longer.
    void retain(const ConversationModel& model);

private:
    void fit(MessageLayout& layout, const ConversationRow& row);
    MessageLayout::Shape shapeFor(const ConversationRow& row) const;

    Measure m_measure;
    std::map<QUuid, MessageLayout> m_messages;
    /// The layout of the reply in progress; the message that it becomes takes it over.
    std::optional<MessageLayout> m_reply;
    /// Lines for another width, which go in slices as well.
    std::vector<MessageSegments> m_outdated;
};

} // namespace pobblewig
