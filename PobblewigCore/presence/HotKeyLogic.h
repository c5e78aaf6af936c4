#pragma once

#include <QKeySequence>

namespace pobblewig::HotKeyLogic {

/// Whether a program may listen for it everywhere: one key together with Ctrl, Alt or Meta. Others
/// are keys that people type with.
bool isUsable(const QKeySequence& keys);

} // namespace pobblewig::HotKeyLogic
