#pragma once

#include "foundation/FileOperations.h"

#include <QDir>

/// The files that the user's directory of memes begins with.
namespace pobblewig::MemeStarterFiles {

/// How to add memes by hand.
QString curationReadme();

/// Writes those that are missing. A failure is ignored: the library works without them.
void seed(const QDir& directory, const FileOperations& operations);

} // namespace pobblewig::MemeStarterFiles
