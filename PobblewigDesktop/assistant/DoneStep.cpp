#include "PobblewigDesktop/assistant/DoneStep.h"

namespace pobblewig {

DoneStep::DoneStep(const std::function<QKeySequence()>& chatKeys)
    : FormPage(tr("That is all"))
{
    const auto keys = chatKeys();
    addText(keys.isEmpty()
            ? tr("Click the buddy to talk. A right click opens its menu.")
            : tr("Click the buddy to talk, or press %1 anywhere. A right click opens its menu.")
                  .arg(keys.toString(QKeySequence::NativeText)));
    addText(tr("Drop a file or a text on it to talk about that. Carry it where you like; "
               "it stays there."));
    addText(tr("Settings are under Ctrl+, in the chat, and this set-up is in the buddy's "
               "menu, should you want it again."));
}

} // namespace pobblewig
