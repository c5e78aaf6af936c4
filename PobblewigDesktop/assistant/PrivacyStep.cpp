#include "PobblewigDesktop/assistant/PrivacyStep.h"

namespace pobblewig {

PrivacyStep::PrivacyStep(AppCoordinator& coordinator)
    : CatalogPage(tr("Memory and privacy"), coordinator)
{
    addText(tr("Pobblewig notes what you tell it, in files that only you can read."));
    addText(tr("It knows which application is in front and for how long, never what you "
               "type, and looks at your screen only when you ask or agree."));
    addText(tr("It changes nothing by itself: it proposes, and you confirm."));
    addText(tr("You can read, correct and delete everything under \"Memory…\" in its menu."));
    addGap();
    addSettings(settings({ u"memoryEnabled", u"keepConversations", u"pausedIndefinitely" }));
}

} // namespace pobblewig
