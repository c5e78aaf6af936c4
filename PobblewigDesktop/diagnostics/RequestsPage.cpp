#include "PobblewigDesktop/diagnostics/RequestsPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/diagnostics/DiagnosticsTexts.h"
#include "PobblewigDesktop/diagnostics/RecordTable.h"
#include "PobblewigDesktop/pages/LaneTexts.h"

#include <QCoroTask>

namespace pobblewig {

RequestsPage::RequestsPage(const DiagnosticsDesk& desk)
    : FormPage(tr("Models"))
    , m_desk(desk)
    , m_lanes(new WrappedLabel({}))
    , m_requests(new RecordTable(tr("Latest requests"), DiagnosticsTexts::requestColumns(),
          tr("Requests appear here as you talk.")))
{
    PanelStyle::setRole(*m_lanes, QStringLiteral("detail"));
    m_lanes->setAccessibleName(tr("Models"));
    add(*m_lanes);
    addHeading(tr("Latest requests"));
    addExplanation(tr("The last %1 since the start, latest first, without what was said.")
                       .arg(RequestLog::most));
    addGap();
    add(*m_requests);
}

void RequestsPage::showState(const PublishedState&)
{
    std::vector<QStringList> rows;
    for (const auto& request : m_desk.requests())
        rows.push_back(DiagnosticsTexts::request(request, m_desk.calendar()));
    m_requests->setRows(std::move(rows));
}

void RequestsPage::showEvent(QShowEvent* event)
{
    FormPage::showEvent(event);
    // A keyring can ask for a password, so it is not opened before.
    QCoro::connect(
        m_desk.lanes(), this, [this](const std::vector<LaneState>& lanes) { showLanes(lanes); });
}

void RequestsPage::showLanes(const std::vector<LaneState>& lanes)
{
    QStringList told;
    for (const auto& lane : lanes)
        told.append(
            QStringLiteral("%1: %2").arg(LaneTexts::name(lane.use), LaneTexts::state(lane)));
    PanelStyle::setText(*m_lanes, DiagnosticsTexts::lines(told));
}

} // namespace pobblewig
