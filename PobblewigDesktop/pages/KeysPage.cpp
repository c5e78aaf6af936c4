#include "PobblewigDesktop/pages/KeysPage.h"

#include "PobblewigDesktop/controls/PanelKeys.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/pages/FieldRow.h"

#include <QLabel>

namespace pobblewig {

KeysPage::KeysPage(const QString& title)
    : FormPage(title)
{
    addExplanation(tr("These work in the chat. The keys that call the chat from elsewhere are "
                      "among the general settings."));
    addGap();
    for (const auto& key : PanelKeys::all()) {
        auto* const name = new QLabel(key.sequence.toString(QKeySequence::NativeText));
        PanelStyle::setRole(*name, QStringLiteral("detail"));
        add(*new FieldRow({ key.words }, *name));
        name->setAccessibleDescription(name->text());
    }
}

} // namespace pobblewig
