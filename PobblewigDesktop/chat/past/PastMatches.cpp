#include "PobblewigDesktop/chat/past/PastMatches.h"

#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/ConversationView.h"
#include "PobblewigDesktop/chat/FindBar.h"
#include "PobblewigDesktop/chat/FindLogic.h"
#include "memory/history/PastConversationLogic.h"

#include <algorithm>

namespace pobblewig {

PastMatches::PastMatches(const ConversationModel& model, ConversationView& view)
    : m_model(model)
    , m_view(view)
{
}

void PastMatches::search(const QString& wanted)
{
    m_matches.clear();
    const auto words = PastConversationLogic::words(wanted);
    for (const auto& row : m_model.rows()) {
        if (!row.isMessage())
            continue;
        for (const auto& place : PastConversationLogic::places(m_view.shownText(row), words))
            m_matches.push_back({ row.id, place });
    }
    m_current = m_matches.empty() ? std::nullopt : std::optional(m_matches.front());
    show();
}

void PastMatches::step(int step)
{
    if (const auto number = FindLogic::neighbour(m_matches, m_current, step))
        m_current = m_matches[*number];
    show();
}

QString PastMatches::inWords() const
{
    if (!m_current)
        return {};
    const auto number = std::ranges::find(m_matches, *m_current) - m_matches.begin() + 1;
    return FindBar::tr("%1 of %2").arg(number).arg(m_matches.size());
}

void PastMatches::show()
{
    m_view.setMatches(m_matches, m_current);
    if (m_current)
        m_view.reveal(*m_current);
}

} // namespace pobblewig
