#pragma once

#include "PobblewigDesktop/pages/FormPage.h"
#include "PobblewigDesktop/pages/SettingsEditor.h"

class QLabel;
class QVBoxLayout;

namespace pobblewig {

class Switch;
class WrappedLabel;

/// The folders that the assistant may read, each with a switch.
class FoldersPage : public FormPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    explicit FoldersPage(AppCoordinator& coordinator);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

private:
    void askForFolder();
    void addFolder(const QString& path);
    void removeFolder(const QUuid& id);
    void setEnabled(const QUuid& id, bool isEnabled);
    void showFolders();
    QWidget* line(const AppDataSource& folder);

    SettingsEditor m_editor;
    std::vector<AppDataSource> m_folders;
    WrappedLabel* m_empty;
    WrappedLabel* m_problem;
    QWidget* m_list;
    Palette m_palette;
};

} // namespace pobblewig
