#pragma once

#include <QString>

#include <map>
#include <optional>

namespace pobblewig {

/// Variables by name.
using Environment = std::map<QString, QString>;

/// Treats an empty value as absent.
std::optional<QString> variable(const Environment& environment, const QString& name);

/// The variables of the process. Where one is missing or empty, the file's value is used. If
/// neither names a model, the demo model at POBBLEWIG_DEMO_MODEL_URL is the main one.
Environment currentEnvironment(const QString& file);

/// Variables from a file, in the format of systemd's environment files, since a desktop application
/// is not started from a shell.
namespace EnvironmentFile {

/// In bytes. What is larger is not read.
inline constexpr qint64 largestFile = 64 * 1024;

/// "environment" in the program's configuration directory.
QString defaultPath();

/// Returns nothing for a file that is missing, unreadable or too large.
Environment read(const QString& path);

/// Reads lines of the form NAME=VALUE. A quoted value can span lines. A backslash escapes the next
/// character or joins the next line; "#" and ";" begin a comment. The last value of a name wins.
Environment parse(const QString& text);

} // namespace EnvironmentFile

} // namespace pobblewig
