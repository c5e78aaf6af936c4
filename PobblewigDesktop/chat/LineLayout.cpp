#include "PobblewigDesktop/chat/LineLayout.h"

#include "PobblewigDesktop/chat/BlockStyle.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

QTextOption option(bool isRightToLeft, bool isCentred, StyledText::Align align)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    const auto isAtRight = isRightToLeft || align == StyledText::Align::right;
    option.setAlignment(isCentred || align == StyledText::Align::centre ? Qt::AlignHCenter
            : isAtRight                                                 ? Qt::AlignRight
                                                                        : Qt::AlignLeft);
    return option;
}

/// How far the bullet or number of an item hangs into its indentation.
qreal hangingWidth(const MessageSegment& segment, const StyledText::Block& block)
{
    if (block.marker == 0 || segment.start != block.range.start)
        return 0;
    return QFontMetricsF(segment.lines->font())
        .horizontalAdvance(segment.lines->text().left(block.marker));
}

} // namespace

QString LineLayout::asShown(const QString& text)
{
    auto shown = text;
    for (auto& character : shown) {
        const auto isControl = character.category() == QChar::Other_Control;
        if (isControl && character != u'\t' && character != u'\n')
            character = u' ';
    }
    return shown;
}

void LineLayout::fill(MessageSegment& segment, const StyledText& text, const QFont& font)
{
    const TextRange part { segment.start, segment.length };
    segment.lines->setText(asShown(text.text.mid(part.start, part.length)));
    segment.lines->setFormats(BlockStyles::formats(text, part, font));
}

qreal LineLayout::place(
    MessageSegment& segment, const StyledText& text, const Rules& rules, int mostLines)
{
    const auto& block = text.blocks[segment.block];
    auto& lines = *segment.lines;
    lines.setTextOption(option(segment.rightToLeft, rules.isCentred, block.align));
    const auto hanging = hangingWidth(segment, block);
    qreal widest = 0;
    segment.height = 0;
    lines.beginLayout();
    for (auto line = lines.createLine(); line.isValid(); line = lines.createLine()) {
        const auto overhang = lines.lineCount() == 1 ? hanging : 0;
        line.setLineWidth(segment.width + overhang);
        line.setPosition({ segment.rightToLeft ? 0 : -overhang, segment.height });
        segment.height += std::max(rules.lineHeight, std::ceil(line.height()));
        widest = std::max(widest, std::ceil(line.naturalTextWidth()));
        if (lines.lineCount() == mostLines)
            break;
    }
    lines.endLayout();
    return widest;
}

} // namespace pobblewig
