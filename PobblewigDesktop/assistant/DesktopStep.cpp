#include "PobblewigDesktop/assistant/DesktopStep.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/pages/LaneTexts.h"

namespace pobblewig {

DesktopStep::DesktopStep(AppCoordinator& coordinator, std::function<QKeySequence()> chatKeys)
    : FormPage(tr("This desktop"))
    , m_coordinator(coordinator)
    , m_chatKeys(std::move(chatKeys))
    , m_limits(new WrappedLabel({}))
{
    m_limits->setAccessibleName(tr("What this desktop cannot offer"));
    add(*m_limits);
}

void DesktopStep::showState(const PublishedState&)
{
    auto limits = m_coordinator.diagnostics().observation.notes;
    const auto keyring = m_coordinator.modelDesk().keyring();
    if (keyring == KeychainHelper::State::absent)
        limits.append(tr("The keyring: %1").arg(LaneTexts::keyring(keyring)));
    if (m_chatKeys().isEmpty())
        limits.append(tr("Keys that call the chat from everywhere: this desktop gives none. Click "
                         "the buddy instead."));
    PanelStyle::setText(*m_limits,
        limits.isEmpty() ? tr("Everything works here.")
                         : limits.join(QString(2, QChar(QChar::LineSeparator))));
}

} // namespace pobblewig
