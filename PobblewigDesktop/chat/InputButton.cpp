#include "PobblewigDesktop/chat/InputButton.h"

#include <QToolButton>

namespace pobblewig {

QToolButton* inputButton(const QString& name, QWidget* parent)
{
    auto* const button = new QToolButton(parent);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setIconSize({ 20, 20 });
    button->setFixedSize(36, 36);
    return button;
}

} // namespace pobblewig
