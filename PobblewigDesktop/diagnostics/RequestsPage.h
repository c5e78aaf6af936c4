#pragma once

#include "PobblewigDesktop/diagnostics/DiagnosticsDesk.h"
#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

class RecordTable;
class WrappedLabel;

/// The models with their latest errors, and the latest requests to them.
class RequestsPage : public FormPage {
    Q_OBJECT

public:
    explicit RequestsPage(const DiagnosticsDesk& desk);

    void showState(const PublishedState& state) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void showLanes(const std::vector<LaneState>& lanes);

    DiagnosticsDesk m_desk;
    WrappedLabel* m_lanes;
    RecordTable* m_requests;
};

} // namespace pobblewig
