#include "PobblewigDesktop/chat/BlockStyle.h"

#include "PobblewigDesktop/controls/EmojiFont.h"

#include <QFontDatabase>
#include <QFontMetricsF>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using Kind = StyledText::BlockKind;

QFont headingFont(QFont font, int level)
{
    constexpr std::array larger { 4.0, 2.5, 1.0 };
    if (level <= std::ssize(larger))
        font.setPointSizeF(font.pointSizeF() + larger.at(static_cast<std::size_t>(level - 1)));
    font.setWeight(QFont::DemiBold);
    return font;
}

QTextCharFormat formatOf(unsigned looks, const QFont& font)
{
    QTextCharFormat format;
    if (looks & StyledText::strong)
        format.setFontWeight(QFont::Bold);
    if (looks & StyledText::emphasis)
        format.setFontItalic(true);
    if (looks & StyledText::struck)
        format.setFontStrikeOut(true);
    if (looks & StyledText::code) {
        const auto codeFont = BlockStyles::codeFont(font);
        format.setFontFamilies(codeFont.families());
        format.setFontPointSize(codeFont.pointSizeF());
        format.setFontFixedPitch(true);
    }
    return format;
}

} // namespace

BlockStyle BlockStyles::style(const StyledText::Block& block, const QFont& font)
{
    BlockStyle style { .font = font };
    style.indent = block.quotes * BlockStyle::quoteStep + block.lists * BlockStyle::listStep;
    if (block.kind == Kind::heading)
        style.font = headingFont(font, block.level);
    if (block.kind == Kind::code) {
        style.font = codeFont(font);
        style.padding = BlockStyle::codePadding;
        style.head = std::ceil(QFontMetricsF(font).height()) + BlockStyle::codePadding;
    }
    return style;
}

QFont BlockStyles::codeFont(const QFont& font)
{
    auto fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setFamilies({ fixed.family() });
    fixed.setPointSizeF(font.pointSizeF() * 0.93);
    return fixed;
}

qreal BlockStyles::gap(StyledText::Gap gap, qreal lineHeight)
{
    switch (gap) {
    case StyledText::Gap::none:
        return 0;
    case StyledText::Gap::narrow:
        return std::round(lineHeight * 0.2);
    case StyledText::Gap::wide:
        return std::round(lineHeight * 0.6);
    }
    Q_UNREACHABLE();
}

QList<QTextLayout::FormatRange> BlockStyles::formats(
    const StyledText& text, const TextRange& part, const QFont& font)
{
    const auto end = [](const auto& span) { return span.range.end(); };
    QList<QTextLayout::FormatRange> formats;
    auto span = std::ranges::upper_bound(text.spans, part.start, {}, end);
    for (; span != text.spans.end() && span->range.start < part.end(); ++span) {
        const auto from = std::max(span->range.start, part.start);
        const auto to = std::min(span->range.end(), part.end());
        formats.append({ static_cast<int>(from - part.start), static_cast<int>(to - from),
            formatOf(span->looks, font) });
    }
    formats += EmojiFont::formats(QStringView(text.text).mid(part.start, part.length));
    return formats;
}

} // namespace pobblewig
