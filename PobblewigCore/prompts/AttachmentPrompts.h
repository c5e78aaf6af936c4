#pragma once

#include <QString>

namespace pobblewig::Prompts {

/// The user's question when something is attached but nothing written.
inline constexpr QStringView attachmentUserPrompt = u"Take a look at what I have attached.";

/// The text of a file, to stand in front of the user's message. `isCut` says that the text is only
/// the file's beginning.
QString attachedFile(const QString& name, const QString& text, bool isCut);

} // namespace pobblewig::Prompts
