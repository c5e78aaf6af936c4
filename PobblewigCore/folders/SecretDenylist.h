#pragma once

#include <QStringView>

#include <span>

/// Names that are typical of secrets, in lower case. A "*" matches any number of characters, and a
/// "-" also matches a "_" or a blank.
namespace pobblewig::SecretDenylist {

std::span<const QStringView> files();

/// Words that mark a file wherever they stand in its name: "my passwords 2026.txt".
std::span<const QStringView> words();

/// Words that mark a file only at the end of a part between dots, since they begin ordinary names
/// as well: "deploy_token.txt", but not "token_economy.md".
std::span<const QStringView> lastWords();

/// What may follow such a word: "token backup.txt".
std::span<const QStringView> wordsOfCopies();

/// Folders in which any file may be secret.
std::span<const QStringView> folders();

/// The endings that editors and users append to the name of a copy.
std::span<const QStringView> endingsOfCopies();

} // namespace pobblewig::SecretDenylist
