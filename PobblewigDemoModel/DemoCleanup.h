#pragma once

#include "foundation/JSONValue.h"

#include <QDateTime>

/// The notes, rewritten by rules.
namespace pobblewig::DemoCleanup {

/// All of them as they are, without those whose time is over and those that say, case and
/// punctuation aside, what another one says. What the user said in so many words stays. Nothing for
/// a prompt without readable notes.
JSONValue rewritten(const QString& prompt, const QDateTime& now);

} // namespace pobblewig::DemoCleanup
