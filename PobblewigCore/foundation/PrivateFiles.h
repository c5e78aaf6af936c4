#pragma once

#include <QString>

/// Keeps the user's files from the other users of the computer.
namespace pobblewig::PrivateFiles {

/// Whether other users may read the file, as the permissions of it and the directories above it
/// tell.
bool isReadableByOthers(const QString& path);

/// Takes all permissions from other users: of the directory and of everything in it. Leaves out
/// what links lead to. Failures are ignored, since some file systems have no permissions.
void tighten(const QString& directory);

} // namespace pobblewig::PrivateFiles
