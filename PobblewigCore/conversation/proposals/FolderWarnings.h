#pragma once

#include "settings/AppSettings.h"

#include <QStringList>

/// Warns of folders that hold far more than their names say.
namespace pobblewig::FolderWarnings {

/// A sentence for the user about each shared folder that is new and holds the whole computer or the
/// whole home folder.
QStringList warnings(const AppSettings& before, const AppSettings& after);

} // namespace pobblewig::FolderWarnings
