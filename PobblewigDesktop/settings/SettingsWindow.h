#pragma once

#include "PobblewigDesktop/pages/PageWindow.h"
#include "PobblewigDesktop/settings/GeneralPage.h"

class QCompleter;
class QLineEdit;

namespace pobblewig {

/// "Pobblewig Settings": the pages of the settings, and a search over all of them.
class SettingsWindow : public PageWindow {
    Q_OBJECT

public:
    /// What is passed must outlive the window.
    SettingsWindow(
        AppCoordinator& coordinator, const GeneralPage::Desktop& desktop, const Moment& moment);

private:
    void addSearch();
    void find(const QString& words);

    QLineEdit* m_search;
};

} // namespace pobblewig
