#pragma once

#include <QKeySequence>

namespace pobblewig::HotKeyLogic {

/// Returns whether a program may listen for these keys everywhere: one key together with Ctrl, Alt
/// or Meta. All others are needed for typing.
bool isUsable(const QKeySequence& keys);

} // namespace pobblewig::HotKeyLogic
