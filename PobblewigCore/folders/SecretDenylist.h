#pragma once

#include <QStringView>

#include <span>

/// Names that are typical of secrets, in lower case. A "*" matches any number of characters, and a
/// "-" also matches a "_" or a blank.
namespace pobblewig::SecretDenylist {

std::span<const QStringView> files();

/// Words that mark a file at the end of any part between dots: "deploy_token.txt".
std::span<const QStringView> words();

/// Folders in which any file may be secret.
std::span<const QStringView> folders();

/// The endings that editors and users append to the name of a copy.
std::span<const QStringView> endingsOfCopies();

} // namespace pobblewig::SecretDenylist
