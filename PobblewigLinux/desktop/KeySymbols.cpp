#include "PobblewigLinux/desktop/KeySymbols.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <utility>

namespace pobblewig {

namespace {

constexpr std::array<std::pair<Qt::Key, xkb_keysym_t>, 18> namedKeys { {
    { Qt::Key_Escape, XKB_KEY_Escape },
    { Qt::Key_Tab, XKB_KEY_Tab },
    { Qt::Key_Backtab, XKB_KEY_Tab },
    { Qt::Key_Backspace, XKB_KEY_BackSpace },
    { Qt::Key_Return, XKB_KEY_Return },
    { Qt::Key_Insert, XKB_KEY_Insert },
    { Qt::Key_Delete, XKB_KEY_Delete },
    { Qt::Key_Pause, XKB_KEY_Pause },
    { Qt::Key_Print, XKB_KEY_Print },
    { Qt::Key_Home, XKB_KEY_Home },
    { Qt::Key_End, XKB_KEY_End },
    { Qt::Key_Left, XKB_KEY_Left },
    { Qt::Key_Up, XKB_KEY_Up },
    { Qt::Key_Right, XKB_KEY_Right },
    { Qt::Key_Down, XKB_KEY_Down },
    { Qt::Key_PageUp, XKB_KEY_Prior },
    { Qt::Key_PageDown, XKB_KEY_Next },
    { Qt::Key_Menu, XKB_KEY_Menu },
} };

constexpr std::array<std::pair<Qt::KeyboardModifier, QStringView>, 4> triggerModifiers { {
    { Qt::ControlModifier, u"CTRL+" },
    { Qt::AltModifier, u"ALT+" },
    { Qt::ShiftModifier, u"SHIFT+" },
    { Qt::MetaModifier, u"LOGO+" },
} };

} // namespace

std::optional<xkb_keysym_t> KeySymbols::symbol(Qt::Key key)
{
    if (key < Qt::Key_Escape) {
        const auto found = xkb_utf32_to_keysym(QChar::toLower(char32_t(key)));
        return found == XKB_KEY_NoSymbol ? std::nullopt : std::optional(found);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return XKB_KEY_F1 + xkb_keysym_t(key - Qt::Key_F1);
    const auto* named = std::ranges::find(namedKeys, key, &decltype(namedKeys)::value_type::first);
    return named == namedKeys.end() ? std::nullopt : std::optional(named->second);
}

QString KeySymbols::trigger(QKeyCombination keys)
{
    const auto found = symbol(keys.key());
    if (!found)
        return {};
    QString trigger;
    for (const auto& [modifier, name] : triggerModifiers) {
        if (keys.keyboardModifiers() & modifier)
            trigger += name;
    }
    std::array<char, 64> name {};
    xkb_keysym_get_name(*found, name.data(), name.size());
    return trigger + QLatin1String(name.data());
}

} // namespace pobblewig
