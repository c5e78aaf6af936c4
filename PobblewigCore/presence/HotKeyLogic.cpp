#include "presence/HotKeyLogic.h"

namespace pobblewig {

bool HotKeyLogic::isUsable(const QKeySequence& keys)
{
    constexpr Qt::KeyboardModifiers held = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (keys.count() != 1 || keys[0].key() == Qt::Key_unknown)
        return false;
    const auto modifiers = keys[0].keyboardModifiers();
    return (modifiers & held) && !(modifiers & ~(held | Qt::ShiftModifier));
}

} // namespace pobblewig
