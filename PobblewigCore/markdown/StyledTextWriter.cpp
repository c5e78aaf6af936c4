#include "markdown/StyledTextWriter.h"

#include "markdown/LinkAddress.h"
#include "markdown/MarkdownEntity.h"

#include <utility>

namespace pobblewig {

namespace {

using Kind = StyledText::BlockKind;
using Gap = StyledText::Gap;

QString textOf(const MD_CHAR* text, MD_SIZE size)
{
    return QString::fromUtf8(text, static_cast<qsizetype>(size));
}

QString textOf(const MD_ATTRIBUTE& attribute)
{
    return textOf(attribute.text, attribute.size);
}

template <typename Detail>
const Detail& as(const void* detail)
{
    return *static_cast<const Detail*>(detail);
}

StyledText::Align alignOf(MD_ALIGN align)
{
    if (align == MD_ALIGN_CENTER)
        return StyledText::Align::centre;
    return align == MD_ALIGN_RIGHT ? StyledText::Align::right : StyledText::Align::natural;
}

unsigned lookOf(MD_SPANTYPE type)
{
    switch (type) {
    case MD_SPAN_EM:
        return StyledText::emphasis;
    case MD_SPAN_STRONG:
        return StyledText::strong;
    case MD_SPAN_CODE:
        return StyledText::code;
    case MD_SPAN_DEL:
        return StyledText::struck;
    default:
        return 0;
    }
}

} // namespace

StyledText StyledTextWriter::take()
{
    endBlock();
    return std::move(m_text);
}

void StyledTextWriter::enter(MD_BLOCKTYPE type, const void* detail)
{
    forgetSpans();
    switch (type) {
    case MD_BLOCK_QUOTE:
        endBlock();
        ++m_quotes;
        break;
    case MD_BLOCK_UL:
        endBlock();
        m_lists.push_back({ .isTight = as<MD_BLOCK_UL_DETAIL>(detail).is_tight != 0 });
        break;
    case MD_BLOCK_OL: {
        endBlock();
        const auto& list = as<MD_BLOCK_OL_DETAIL>(detail);
        m_lists.push_back({ true, list.is_tight != 0, list.start });
        break;
    }
    case MD_BLOCK_LI:
        beginItem(as<MD_BLOCK_LI_DETAIL>(detail));
        break;
    case MD_BLOCK_HR:
        beginBlock({ .kind = Kind::rule });
        break;
    case MD_BLOCK_H:
        beginBlock({ .kind = Kind::heading,
            .level = static_cast<int>(as<MD_BLOCK_H_DETAIL>(detail).level) });
        break;
    case MD_BLOCK_CODE:
        writeMarkerAlone();
        beginBlock(
            { .kind = Kind::code, .language = textOf(as<MD_BLOCK_CODE_DETAIL>(detail).lang) });
        break;
    case MD_BLOCK_P:
        beginBlock({});
        break;
    case MD_BLOCK_TABLE:
        writeMarkerAlone();
        m_row = -1;
        break;
    case MD_BLOCK_TR:
        ++m_row;
        m_column = 0;
        break;
    case MD_BLOCK_TH:
    case MD_BLOCK_TD:
        beginCell(as<MD_BLOCK_TD_DETAIL>(detail), type == MD_BLOCK_TH);
        break;
    default:
        break;
    }
}

void StyledTextWriter::leave(MD_BLOCKTYPE type)
{
    forgetSpans();
    if (type == MD_BLOCK_LI)
        writeMarkerAlone();
    endBlock();
    if (type == MD_BLOCK_QUOTE)
        --m_quotes;
    else if (type == MD_BLOCK_UL || type == MD_BLOCK_OL)
        m_lists.pop_back();
    m_gap = type == MD_BLOCK_H ? Gap::narrow : Gap::wide;
}

/// No span goes beyond its block, but the parser does not end an address that a cell cuts off.
void StyledTextWriter::forgetSpans()
{
    m_looks.clear();
    m_links.clear();
}

void StyledTextWriter::enter(MD_SPANTYPE type, const void* detail)
{
    m_looks.push_back(lookOf(type));
    if (type == MD_SPAN_A || type == MD_SPAN_IMG) {
        const auto address = type == MD_SPAN_A ? textOf(as<MD_SPAN_A_DETAIL>(detail).href)
                                               : textOf(as<MD_SPAN_IMG_DETAIL>(detail).src);
        m_links.push_back({ LinkAddress::safe(address), m_text.text.size() });
    }
}

void StyledTextWriter::leave(MD_SPANTYPE type)
{
    if ((type == MD_SPAN_A || type == MD_SPAN_IMG) && !m_links.empty())
        endLink();
    if (!m_looks.empty())
        m_looks.pop_back();
}

void StyledTextWriter::write(MD_TEXTTYPE type, const QString& text)
{
    if (!m_isInBlock)
        beginBlock({});
    switch (type) {
    case MD_TEXT_NULLCHAR:
        append(QString(QChar::ReplacementCharacter), looks());
        break;
    case MD_TEXT_BR:
    case MD_TEXT_SOFTBR:
        append(QStringLiteral("\n"), 0);
        break;
    case MD_TEXT_ENTITY:
        append(MarkdownEntity::decoded(text), looks());
        break;
    default:
        append(QString(text).replace(plainAsterisk, u'*'), looks());
    }
}

void StyledTextWriter::beginItem(const MD_BLOCK_LI_DETAIL& item)
{
    endBlock();
    auto& list = m_lists.back();
    if (item.is_task != 0)
        m_marker = item.task_mark == ' ' ? QStringLiteral("☐ ") : QStringLiteral("☑ ");
    else if (list.isOrdered)
        m_marker = QStringLiteral("%1. ").arg(list.next++);
    else
        m_marker = m_lists.size() % 2 == 1 ? QStringLiteral("• ") : QStringLiteral("◦ ");
    if (list.isTight && !m_text.blocks.empty() && m_text.blocks.back().lists > 0)
        m_gap = Gap::narrow;
}

void StyledTextWriter::beginCell(const MD_BLOCK_TD_DETAIL& cell, bool isHead)
{
    beginBlock(
        { .kind = Kind::cell, .row = m_row, .column = m_column++, .align = alignOf(cell.align) });
    if (isHead)
        m_looks.push_back(StyledText::strong);
}

void StyledTextWriter::beginBlock(StyledText::Block block)
{
    endBlock();
    auto& text = m_text.text;
    const auto isInRow = block.kind == Kind::cell && block.column > 0;
    const auto isInTable = block.kind == Kind::cell && block.row > 0;
    if (!m_text.blocks.empty())
        text += isInRow ? u'\t' : u'\n';
    block.range.start = text.size();
    if (!m_text.blocks.empty() && !isInRow && !isInTable)
        block.gapBefore = m_gap;
    block.quotes = m_quotes;
    block.lists = static_cast<int>(m_lists.size());
    const auto marker = std::exchange(m_marker, {});
    block.marker = static_cast<int>(marker.size());
    text += marker;
    m_text.blocks.push_back(std::move(block));
    m_isInBlock = true;
}

void StyledTextWriter::endBlock()
{
    if (!std::exchange(m_isInBlock, false))
        return;
    auto& block = m_text.blocks.back();
    const auto isEmpty = m_text.text.size() == block.range.start;
    if (block.kind == Kind::code && !isEmpty && m_text.text.endsWith(u'\n'))
        m_text.text.chop(1);
    block.range.length = m_text.text.size() - block.range.start;
    m_gap = Gap::wide;
}

/// An item that begins with something else than a text, or has none.
void StyledTextWriter::writeMarkerAlone()
{
    if (m_marker.isEmpty())
        return;
    beginBlock({});
    endBlock();
    m_gap = Gap::narrow;
}

void StyledTextWriter::append(const QString& text, unsigned looks)
{
    const TextRange range { m_text.text.size(), text.size() };
    m_text.text += text;
    const auto link = m_links.empty() ? QString() : m_links.back().address;
    if (looks == 0 && link.isEmpty())
        return;
    auto& spans = m_text.spans;
    const auto continues = !spans.empty() && spans.back().range.end() == range.start
        && spans.back().looks == looks && spans.back().link == link;
    if (continues)
        spans.back().range.length += range.length;
    else
        spans.push_back({ range, looks, link });
}

void StyledTextWriter::endLink()
{
    const auto& link = m_links.back();
    const auto text = QStringView(m_text.text).mid(link.begin);
    const auto origin = LinkAddress::origin(link.address);
    if (!origin.isEmpty() && !LinkAddress::names(text, origin))
        append(QStringLiteral(" (%1)").arg(origin), looks() | StyledText::origin);
    m_links.pop_back();
}

unsigned StyledTextWriter::looks() const
{
    unsigned all = 0;
    for (const auto look : m_looks)
        all |= look;
    return all;
}

} // namespace pobblewig
