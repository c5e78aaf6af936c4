#pragma once

#include "PobblewigDesktop/chat/ConversationHits.h"
#include "PobblewigDesktop/chat/ConversationMarks.h"

namespace pobblewig {

/// The texts of the conversation as they are shown, and the marking of them.
class ConversationTexts {
public:
    /// All arguments must outlive this object.
    ConversationTexts(
        const ConversationModel& model, MessageLayouts& layouts, ConversationMarks& marks)
        : m_model(model)
        , m_layouts(layouts)
        , m_marks(marks)
    {
    }

    /// What a row shows, without markup.
    QString shown(const ConversationRow& row) const;

    /// What is selected, a blank line between two messages.
    QString selected() const;

    /// Selects what stands between two places, in whichever order.
    void select(const TextPlace& from, const TextPlace& to);
    void selectAllOf(const QModelIndex& row);
    void selectWordAt(const TextPlace& place);

private:
    MessageLayout& layout(const QModelIndex& index) const;

    const ConversationModel& m_model;
    MessageLayouts& m_layouts;
    ConversationMarks& m_marks;
};

} // namespace pobblewig
