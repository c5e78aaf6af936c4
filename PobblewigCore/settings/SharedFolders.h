#pragma once

#include "settings/AppDataSource.h"

#include <tl/expected.hpp>

/// How the user shares folders with the assistant.
namespace pobblewig::SharedFolders {

using Folders = std::vector<AppDataSource>;

/// The folders and another one, named after its last part. The error is a sentence for the user:
/// the folder is shared already, or its path cannot be shown as it is.
tl::expected<Folders, QString> with(const Folders& folders, const QString& path);

} // namespace pobblewig::SharedFolders
