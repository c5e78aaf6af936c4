#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/pages/FormPage.h"

#include <QKeySequence>

namespace pobblewig {

class WrappedLabel;

/// What this desktop cannot offer, and why.
class DesktopStep : public FormPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page. The keys are those that call the chat, or none.
    DesktopStep(AppCoordinator& coordinator, std::function<QKeySequence()> chatKeys);

    void showState(const PublishedState& state) override;

private:
    AppCoordinator& m_coordinator;
    std::function<QKeySequence()> m_chatKeys;
    WrappedLabel* m_limits;
};

} // namespace pobblewig
