#pragma once

#include "PobblewigDesktop/chat/ConversationMarks.h"

#include <QObject>

namespace pobblewig {

class ConversationModel;
class ConversationView;
class FindBar;

/// Searches the conversation for the text in the bar.
class ConversationFind : public QObject {
    Q_OBJECT

public:
    ConversationFind(FindBar& bar, const ConversationModel& model, ConversationView& view,
        QObject* parent = nullptr);

    /// Searches anew, without leaving the current match.
    void refresh();
    void close();

private:
    void begin();
    void step(int step);
    void search();
    void showCount();

    FindBar& m_bar;
    const ConversationModel& m_model;
    ConversationView& m_view;
    std::vector<MessageRange> m_matches;
    std::optional<MessageRange> m_current;
};

} // namespace pobblewig
