#pragma once

#include "PobblewigDesktop/diagnostics/DiagnosticsDesk.h"
#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

class RecordTable;
class WrappedLabel;

/// The files of the data directory, as they are when the page is opened.
class FilesPage : public FormPage {
    Q_OBJECT

public:
    explicit FilesPage(const DiagnosticsDesk& desk);

    void showState(const PublishedState&) override { }

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget& folderButton();
    void list();

    DiagnosticsDesk m_desk;
    RecordTable* m_files;
    WrappedLabel* m_setAside;
};

} // namespace pobblewig
