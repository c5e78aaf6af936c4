#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/memory/EntryPage.h"
#include "PobblewigDesktop/memory/ReferenceLogic.h"

#include <QStandardItemModel>

#include <set>

namespace pobblewig {

/// The structured facts: sections with their items as a tree, and sections that a model proposes.
class ReferencePage : public EntryPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    ReferencePage(AppCoordinator& coordinator, const Calendar& calendar);

private:
    void list() override;
    void showSelected() override;
    void showTree();
    void showItem(const ReferenceItem& item);
    void showSection(const ReferenceSectionMeta& section);
    QStandardItem* sectionRow(const ReferenceNode& node) const;
    QStandardItem* itemRow(const ReferenceItem& item) const;

    void confirm();
    void reject();
    void remove();

    /// What a row of the tree stands for.
    struct Entry {
        const ReferenceNode* node = nullptr;
        const ReferenceItem* item = nullptr;
    };
    Entry selected() const;

    AppCoordinator& m_coordinator;
    Calendar m_calendar;
    QStandardItemModel* m_tree;
    QPushButton* m_reject;
    QPushButton* m_confirm;
    QPushButton* m_delete;
    std::vector<ReferenceNode> m_nodes;
    /// The path of the selected section, or the id of the selected item.
    QString m_shown;
    /// The paths of the sections that are folded out.
    std::set<QString> m_open;
};

} // namespace pobblewig
