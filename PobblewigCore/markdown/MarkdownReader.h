#pragma once

#include "markdown/StyledText.h"

/// Reads Markdown as models write it: emphasis, headings, lists, quotations, tables, code and
/// links. Everything else, such as HTML and footnotes, is text.
namespace pobblewig::MarkdownReader {

/// An image shows as its description. A link is followed by its host unless its text names it; only
/// addresses on the web and of mail are links.
StyledText read(const QString& markdown);

} // namespace pobblewig::MarkdownReader
