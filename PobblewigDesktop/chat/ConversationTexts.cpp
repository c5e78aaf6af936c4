#include "PobblewigDesktop/chat/ConversationTexts.h"

#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/MessageLayouts.h"

#include <utility>

namespace pobblewig {

QString ConversationTexts::shown(const ConversationRow& row) const
{
    if (row.kind == ConversationRow::Kind::day)
        return row.text;
    return MessageLayout::asShown(m_layouts.layout(row).text());
}

QString ConversationTexts::selected() const
{
    QStringList texts;
    for (const auto& row : m_model.rows()) {
        const auto selection = m_marks.selection.find(row.id);
        if (selection == m_marks.selection.end() || row.kind == ConversationRow::Kind::day)
            continue;
        texts += MessageLayout::asShown(m_layouts.layout(row).shown().copied(selection->second));
    }
    return texts.join(QStringLiteral("\n\n"));
}

void ConversationTexts::select(const TextPlace& from, const TextPlace& to)
{
    m_marks.selection.clear();
    const auto isForward =
        std::pair(from.row.row(), from.position) <= std::pair(to.row.row(), to.position);
    const auto& first = isForward ? from : to;
    const auto& last = isForward ? to : from;
    for (auto number = first.row.row(); number <= last.row.row(); ++number) {
        const auto& row = m_model.row(number);
        if (row.kind == ConversationRow::Kind::day)
            continue;
        const auto start = number == first.row.row() ? first.position : 0;
        const auto end =
            number == last.row.row() ? last.position : m_layouts.layout(row).text().size();
        if (end > start)
            m_marks.selection[row.id] = { start, end - start };
    }
}

void ConversationTexts::selectAllOf(const QModelIndex& row)
{
    select({ row, 0 }, { row, layout(row).text().size() });
}

void ConversationTexts::selectWordAt(const TextPlace& place)
{
    const auto word = layout(place.row).wordAt(place.position);
    select({ place.row, word.start }, { place.row, word.end() });
}

MessageLayout& ConversationTexts::layout(const QModelIndex& index) const
{
    return m_layouts.layout(m_model.row(index.row()));
}

} // namespace pobblewig
