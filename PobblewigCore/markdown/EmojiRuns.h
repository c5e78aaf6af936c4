#pragma once

#include "markdown/TextRange.h"

#include <QString>

#include <vector>

namespace pobblewig {

/// Finds what is meant to be a picture: emoji with all that belongs to them, such as the tone of
/// the skin, the members of a family and the halves of a flag.
std::vector<TextRange> emojiRuns(QStringView text);

/// Leaves out the signs within an emoji that ask for a picture, at which Qt would take it apart.
QString withJoinedEmoji(QString text);

} // namespace pobblewig
