#pragma once

#include "PobblewigDesktop/chat/past/PastMatches.h"
#include "PobblewigDesktop/controls/Theme.h"
#include "foundation/Calendar.h"
#include "memory/history/ConversationLibrary.h"

#include <QWidget>

class QLabel;
class QListWidget;
class QPushButton;

namespace pobblewig {

class Banner;
class ConversationModel;
class ConversationView;
class PastSearchField;

/// The window for reading earlier conversations again: a list by day, a search over all of them,
/// and the conversation of the selected day.
class PastConversations : public QWidget {
    Q_OBJECT

public:
    /// The library must outlive the window.
    PastConversations(
        ConversationLibrary& library, Calendar calendar, Clock clock, QWidget* parent = nullptr);
    ~PastConversations() override;

    void setTheme(const Palette& palette);

    /// Selects the conversation with this name, once it is listed. Ignores a name that is not.
    void reveal(const QString& name);

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Messages = ConversationLibrary::Messages;

    void arrange();
    void find();
    void step(int step);
    void list(std::vector<PastConversation> conversations);
    void readSelected();
    void read(const Messages& messages);
    void copy() const;
    void exportSelected();
    void save(const QString& path, const QString& filter);
    void askToDelete();
    void deleteConversation(const QString& name);
    void showState();
    const PastConversation* selected() const;
    QString title(const PastConversation& conversation) const;

    ConversationLibrary& m_library;
    Calendar m_calendar;
    Clock m_clock;
    ConversationModel* m_model;
    PastSearchField* m_wanted;
    QListWidget* m_list;
    QLabel* m_note;
    ConversationView* m_view;
    PastMatches m_matches;
    Banner* m_problem;
    QPushButton* m_copy;
    QPushButton* m_export;
    QPushButton* m_delete;
    std::stop_source m_search;
    std::vector<PastConversation> m_conversations;
    /// The name of the conversation to select with the next list.
    std::optional<QString> m_wantedName;
    Messages m_messages;
};

} // namespace pobblewig
