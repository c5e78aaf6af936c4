#pragma once

#include <QString>

#include <map>
#include <optional>

namespace pobblewig {

/// Variables by name.
using Environment = std::map<QString, QString>;

/// An empty value counts as absent.
std::optional<QString> variable(const Environment& environment, const QString& name);

/// The variables of the process; where it has none, or an empty one, that of the file.
Environment currentEnvironment(const QString& file);

/// A desktop application is not started from a shell, so that variables can also stand in a file,
/// written as systemd reads its environment files.
namespace EnvironmentFile {

/// "environment" in the program's directory of the user's configuration.
QString defaultPath();

/// A file that is missing, cannot be read or is larger than 64 KiB holds nothing.
Environment read(const QString& path);

/// Lines of the form NAME=VALUE. A value can be quoted and then span lines; a backslash keeps the
/// next character, or joins the next line; "#" and ";" begin a comment; the last value of a name
/// holds.
Environment parse(const QString& text);

} // namespace EnvironmentFile

} // namespace pobblewig
