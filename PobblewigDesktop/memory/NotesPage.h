#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/memory/EntryPage.h"
#include "PobblewigDesktop/memory/NoteLogic.h"

#include <map>

class QComboBox;

namespace pobblewig {

/// The notes about the user: read, corrected in place, deleted, brought back.
class NotesPage : public EntryPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    NotesPage(AppCoordinator& coordinator, const Calendar& calendar);

private:
    void addFilters();
    void addButtons();
    void list() override;
    void showSelected() override;
    void keepDraft();
    void showButtons();
    NoteLogic::Filter filter() const;
    const MemoryNote* selected() const;

    void correct();
    void remove();
    void revive();
    void openConversation();
    void offerToPutBack(const QString& done, const MemoryNote& before);

    AppCoordinator& m_coordinator;
    Calendar m_calendar;
    QComboBox* m_category;
    QComboBox* m_status;
    QPushButton* m_open;
    QPushButton* m_revive;
    QPushButton* m_delete;
    QPushButton* m_save;
    std::vector<MemoryNote> m_notes;
    /// The note in the text field, and how it was when it came there.
    std::optional<MemoryNote> m_shown;
    /// What the user has written in place of notes and not saved.
    std::map<QUuid, QString> m_drafts;
};

} // namespace pobblewig
