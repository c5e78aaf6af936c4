#pragma once

#include <QKeySequence>

#include <xkbcommon/xkbcommon.h>

#include <optional>

/// Keys as X11 and the desktop portal call them.
namespace pobblewig::KeySymbols {

/// Nothing for a key that no keyboard would be asked for.
std::optional<xkb_keysym_t> symbol(Qt::Key key);

/// "CTRL+ALT+space"; empty for a key without a symbol.
QString trigger(QKeyCombination keys);

} // namespace pobblewig::KeySymbols
