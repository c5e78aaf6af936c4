#pragma once

#include "PobblewigLinux/desktop/FileDescriptor.h"

#include <QByteArray>

#include <tl/expected.hpp>

#include <system_error>

/// Finds the target of a relative path below a folder. Follows links that stay there, but no
/// absolute ones. A path that would lead out fails as `cross_device_link`.
///
/// The descriptor only identifies what was found (O_PATH): devices and FIFOs are not affected.
namespace pobblewig::PathBeneath {

using Found = tl::expected<FileDescriptor, std::error_code>;
using Finder = Found (*)(const FileDescriptor& root, const QByteArray& path);

/// Uses openat2 if the system has it and the sandbox permits it, else `byWalking`.
Found byKernel(const FileDescriptor& root, const QByteArray& path);

/// Goes name by name and resolves the links itself.
Found byWalking(const FileDescriptor& root, const QByteArray& path);

} // namespace pobblewig::PathBeneath
