#pragma once

#include <optional>

namespace pobblewig {

/// Answers questions about the program itself, such as `--version`, on the standard output. Needs
/// no display. Returns the status to exit with, or nothing if there was no such question.
std::optional<int> answerCommandLine(int argc, char** argv);

} // namespace pobblewig
