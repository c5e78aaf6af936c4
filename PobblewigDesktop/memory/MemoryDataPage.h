#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/pages/FormPage.h"

class QPushButton;

namespace pobblewig {

class WrappedLabel;

/// Exports all that is remembered, and deletes it.
class MemoryDataPage : public FormPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    MemoryDataPage(AppCoordinator& coordinator, const Calendar& calendar);

    void showState(const PublishedState& state) override;

private:
    QPushButton& addButton(const QString& text);
    void askForFile();
    void save(const QString& path);
    void askToDelete();
    void deleteAll();
    QString inWords() const;

    AppCoordinator& m_coordinator;
    WrappedLabel* m_contents;
    WrappedLabel* m_problem;
};

} // namespace pobblewig
