#pragma once

#include "foundation/JSONValue.h"

#include <QDateTime>

/// Rewrites the notes by rules.
namespace pobblewig::DemoCleanup {

/// Keeps all notes unchanged, except expired ones and those that repeat another, ignoring case and
/// punctuation. Explicit statements of the user stay. Returns nothing for a prompt without readable
/// notes.
JSONValue rewritten(const QString& prompt, const QDateTime& now);

} // namespace pobblewig::DemoCleanup
