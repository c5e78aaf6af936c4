#include "PobblewigDesktop/diagnostics/RulesAndToolsPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/diagnostics/DiagnosticsTexts.h"
#include "PobblewigDesktop/diagnostics/RecordTable.h"

#include <ranges>

namespace pobblewig {

RulesAndToolsPage::RulesAndToolsPage(const DiagnosticsDesk& desk)
    : FormPage(tr("Rules and tools"))
    , m_desk(desk)
    , m_rules(new WrappedLabel({}))
    , m_proactive(new WrappedLabel({}))
    , m_calls(new RecordTable(tr("Tool calls"), { tr("Time"), tr("Tool"), tr("Outcome") },
          tr("Calls appear here when a model looks something up.")))
{
    addHeading(tr("What each rule would do now"));
    addGap();
    PanelStyle::setRole(*m_rules, QStringLiteral("detail"));
    m_rules->setAccessibleName(tr("Rules"));
    add(*m_rules);
    addHeading(tr("Speaking first"));
    addGap();
    PanelStyle::setRole(*m_proactive, QStringLiteral("detail"));
    m_proactive->setAccessibleName(tr("Speaking first"));
    add(*m_proactive);
    addHeading(tr("Tool calls"));
    addExplanation(tr("What the models have looked up or asked for since the start, latest first, "
                      "without the contents."));
    addGap();
    add(*m_calls);
}

void RulesAndToolsPage::showState(const PublishedState&)
{
    PanelStyle::setText(
        *m_rules, DiagnosticsTexts::lines(m_desk.info().ruleVerdicts, tr("There are no rules.")));
    PanelStyle::setText(*m_proactive,
        DiagnosticsTexts::lines(m_desk.info().proactiveVerdicts,
            tr("Nothing has called for a message since the start.")));
    std::vector<QStringList> rows;
    const auto calls = m_desk.toolCalls();
    for (const auto& call : calls | std::views::reverse)
        rows.push_back({ DiagnosticsTexts::time(call.timestamp, m_desk.calendar()), call.name,
            call.ok ? tr("done") : tr("failed") });
    m_calls->setRows(std::move(rows));
}

} // namespace pobblewig
