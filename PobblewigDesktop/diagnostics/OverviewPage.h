#pragma once

#include "PobblewigDesktop/diagnostics/DiagnosticsDesk.h"
#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

class WrappedLabel;

/// What this session offers, how the storage, the keyring and the librarian fare, and the versions.
class OverviewPage : public FormPage {
    Q_OBJECT

public:
    explicit OverviewPage(const DiagnosticsDesk& desk);

    void showState(const PublishedState& state) override;

private:
    WrappedLabel* addSection(const QString& title);

    DiagnosticsDesk m_desk;
    WrappedLabel* m_observation;
    WrappedLabel* m_storage;
    WrappedLabel* m_keyring;
    WrappedLabel* m_librarian;
    WrappedLabel* m_versions;
};

} // namespace pobblewig
