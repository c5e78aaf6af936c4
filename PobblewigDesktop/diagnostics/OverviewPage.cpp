#include "PobblewigDesktop/diagnostics/OverviewPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/diagnostics/DiagnosticsTexts.h"
#include "PobblewigDesktop/pages/LaneTexts.h"

namespace pobblewig {

OverviewPage::OverviewPage(const DiagnosticsDesk& desk)
    : FormPage(tr("Overview"))
    , m_desk(desk)
    , m_observation(addSection(tr("This desktop")))
    , m_storage(addSection(tr("Storage")))
    , m_keyring(addSection(tr("Keyring")))
    , m_librarian(addSection(tr("Librarian")))
    , m_versions(addSection(tr("Versions")))
{
    PanelStyle::setText(*m_versions, DiagnosticsTexts::lines(DiagnosticsReport::versions()));
}

void OverviewPage::showState(const PublishedState&)
{
    const auto info = m_desk.info();
    const auto& observation = info.observation;
    const QStringList means { tr("Application in front: %1").arg(observation.frontmostBackend),
        tr("Idle time: %1").arg(observation.idleBackend) };
    PanelStyle::setText(*m_observation, DiagnosticsTexts::lines(means + observation.notes));
    PanelStyle::setText(*m_storage, DiagnosticsTexts::storage(m_desk.storage()));
    PanelStyle::setText(*m_keyring, LaneTexts::keyring(m_desk.keyring()));
    PanelStyle::setText(*m_librarian, DiagnosticsTexts::librarian(info, m_desk.calendar()));
}

WrappedLabel* OverviewPage::addSection(const QString& title)
{
    addHeading(title);
    addGap();
    auto* const content = new WrappedLabel({});
    PanelStyle::setRole(*content, QStringLiteral("detail"));
    content->setAccessibleName(title);
    add(*content);
    return content;
}

} // namespace pobblewig
