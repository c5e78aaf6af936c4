#pragma once

#include <QKeySequence>

#include <xkbcommon/xkbcommon.h>

#include <optional>

/// The names of keys in X11 and in the desktop portal.
namespace pobblewig::KeySymbols {

/// Returns nothing for a key that keyboards do not have.
std::optional<xkb_keysym_t> symbol(Qt::Key key);

/// "CTRL+ALT+space"; empty for a key without a symbol.
QString trigger(QKeyCombination keys);

} // namespace pobblewig::KeySymbols
