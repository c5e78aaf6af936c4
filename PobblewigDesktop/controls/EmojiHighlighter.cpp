#include "PobblewigDesktop/controls/EmojiHighlighter.h"

#include "PobblewigDesktop/controls/EmojiFont.h"

namespace pobblewig {

void EmojiHighlighter::highlightBlock(const QString& text)
{
    for (const auto& range : EmojiFont::formats(text))
        setFormat(range.start, range.length, range.format);
}

} // namespace pobblewig
