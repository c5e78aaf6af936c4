#pragma once

#include "foundation/FileOperations.h"
#include "settings/Environment.h"

/// Changes variables in the user's environment file.
namespace pobblewig::EnvironmentWriting {

/// The text with these values. They stand together at its end, where they win over earlier ones;
/// an empty value takes a variable back that was written so. Everything else stays as it is.
/// Returns nothing if the text cannot be continued, as after a quote that does not end.
std::optional<QString> changed(const QString& text, const Environment& values);

/// These values as lines of the file.
QString lines(const Environment& values);

/// Changes the file, or creates it. From then on only this user can read it.
tl::expected<void, FileError> write(
    const QString& path, const Environment& values, const FileOperations& operations);

} // namespace pobblewig::EnvironmentWriting
