#pragma once

#include "PobblewigLinux/desktop/FileDescriptor.h"

#include <QByteArray>

#include <tl/expected.hpp>

#include <system_error>

/// Finds what a relative path names beneath a folder. Links are followed as long as they stay
/// there, absolute ones never; what would lead out is `cross_device_link`.
///
/// The descriptor only stands for what was found (O_PATH): neither a device nor a FIFO notices.
namespace pobblewig::PathBeneath {

using Found = tl::expected<FileDescriptor, std::error_code>;
using Finder = Found (*)(const FileDescriptor& root, const QByteArray& path);

/// By openat2, where the system has it and a sandbox lets us call it, else by walking.
Found byKernel(const FileDescriptor& root, const QByteArray& path);

/// Name by name, resolving the links itself.
Found byWalking(const FileDescriptor& root, const QByteArray& path);

} // namespace pobblewig::PathBeneath
