#pragma once

#include "PobblewigDesktop/diagnostics/DiagnosticsDesk.h"
#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

class RecordTable;
class WrappedLabel;

/// What each rule would do now, why the companion spoke first or did not, and the latest calls of
/// the models' tools.
class RulesAndToolsPage : public FormPage {
    Q_OBJECT

public:
    explicit RulesAndToolsPage(const DiagnosticsDesk& desk);

    void showState(const PublishedState& state) override;

private:
    DiagnosticsDesk m_desk;
    WrappedLabel* m_rules;
    WrappedLabel* m_proactive;
    RecordTable* m_calls;
};

} // namespace pobblewig
