#pragma once

#include <QStringView>

#include <span>

/// The names that secrets go by, in lower case. A "*" stands for any characters, also for none, and
/// a "-" for a "_" or a blank as well.
namespace pobblewig::SecretDenylist {

std::span<const QStringView> files();

/// Give a file away wherever one stands at the end of a part between dots: "deploy_token.txt".
std::span<const QStringView> words();

/// Folders in which any file may be a secret.
std::span<const QStringView> folders();

/// What editors and careful people put behind the name of a copy.
std::span<const QStringView> endingsOfCopies();

} // namespace pobblewig::SecretDenylist
