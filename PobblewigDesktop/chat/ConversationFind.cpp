#include "PobblewigDesktop/chat/ConversationFind.h"

#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/ConversationView.h"
#include "PobblewigDesktop/chat/FindBar.h"
#include "PobblewigDesktop/chat/FindLogic.h"

#include <algorithm>

namespace pobblewig {

ConversationFind::ConversationFind(
    FindBar& bar, const ConversationModel& model, ConversationView& view, QObject* parent)
    : QObject(parent)
    , m_bar(bar)
    , m_model(model)
    , m_view(view)
{
    connect(&bar, &FindBar::wantedChanged, this, &ConversationFind::begin);
    connect(&bar, &FindBar::stepRequested, this, &ConversationFind::step);
}

void ConversationFind::refresh()
{
    search();
    m_view.setMatches(m_matches, m_current);
}

void ConversationFind::close()
{
    m_bar.hide();
    refresh();
    m_view.setFocus(Qt::OtherFocusReason);
}

void ConversationFind::begin()
{
    m_current.reset();
    step(0);
}

void ConversationFind::step(int step)
{
    search();
    if (const auto number = FindLogic::neighbour(m_matches, m_current, step))
        m_current = m_matches[*number];
    m_view.setMatches(m_matches, m_current);
    if (m_current)
        m_view.reveal(*m_current);
    showCount();
}

void ConversationFind::search()
{
    m_matches = FindLogic::matches(
        m_model.rows(), m_bar.wanted(), [this](const auto& row) { return m_view.shownText(row); });
    if (m_current && std::ranges::find(m_matches, *m_current) == m_matches.end())
        m_current.reset();
    showCount();
}

void ConversationFind::showCount()
{
    const auto at = m_current ? std::ranges::find(m_matches, *m_current) : m_matches.end();
    m_bar.showCount(at == m_matches.end()
            ? std::nullopt
            : std::optional(static_cast<std::size_t>(at - m_matches.begin())),
        m_matches.size());
}

} // namespace pobblewig
