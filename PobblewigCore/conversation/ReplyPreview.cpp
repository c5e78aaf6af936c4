#include "conversation/ReplyPreview.h"

#include "conversation/ControlBlock.h"

#include <QStringBuilder>

#include <algorithm>

namespace pobblewig {

using namespace ControlFence;

namespace {

constexpr QStringView closing = u"\n```";

QStringView withoutLastBlanks(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// The size without trailing white space.
qsizetype visibleSize(QStringView text)
{
    auto size = text.size();
    while (size > 0 && text[size - 1].isSpace())
        --size;
    return size;
}

} // namespace

void ReplyPreview::append(const QString& token)
{
    m_reply += token;
    while (m_at < m_reply.size() && advance()) { }
}

/// Returns false if more text is needed.
bool ReplyPreview::advance()
{
    switch (m_state) {
    case State::text:
        return readText();
    case State::marks:
        return readMarks();
    case State::tag:
        return readTag();
    case State::controlBlock:
        return readControlBlock();
    case State::controlLine:
        return readControlLine();
    case State::jsonBlock:
        return readJSONBlock();
    case State::untaggedBlock:
        return readUntaggedBlock();
    case State::lastBlock:
        return readLastBlock();
    }
    Q_UNREACHABLE();
}

bool ReplyPreview::readText()
{
    const auto found = m_reply.indexOf(u'`', m_at);
    const auto end = found < 0 ? m_reply.size() : found;
    show(m_at, end);
    m_at = end;
    m_fence = end;
    m_isClosing = false;
    m_state = found < 0 ? State::text : State::marks;
    return true;
}

bool ReplyPreview::readMarks()
{
    const bool isMark = m_reply[m_at] == u'`';
    if (isMark)
        ++m_at;
    const auto run = m_at - m_fence;
    const bool beginsLine = m_fence > 0 && m_reply[m_fence - 1] == u'\n';
    if (run >= marks.size() && beginsLine && !m_isClosing)
        reveal();
    if (!isMark)
        beginTag();
    return true;
}

void ReplyPreview::beginTag()
{
    const auto run = m_at - m_fence;
    if (run < marks.size()) {
        show(m_fence, m_at);
        m_state = State::text;
        return;
    }
    const auto lastFence = m_fence + beforeLastFence(run);
    if (lastFence > m_fence) {
        show(m_isClosing ? m_fence + marks.size() : m_fence, lastFence);
        m_isClosing = false;
    }
    m_fence = lastFence;
    m_behindFence = m_at;
    m_state = State::tag;
}

bool ReplyPreview::readTag()
{
    if (isBlank(m_reply[m_at])) {
        ++m_at;
        return true;
    }
    const auto line = tagLine(QStringView(m_reply).first(m_at + 1), m_fence);
    if (line.end > m_at)
        ++m_at;
    else
        beginBlock(line);
    return true;
}

void ReplyPreview::beginBlock(const TagLine& line)
{
    const auto next = m_reply[line.end];
    const bool isNamed = line.tag != Tag::other && line.tag != Tag::none;
    if (isControl(line.tag) && line.isWhole)
        m_state = State::controlBlock;
    else if (isControl(line.tag) && (next == u'{' || next == u'['))
        m_state = State::controlLine;
    else if (line.isWhole && line.tag == Tag::json)
        beginJSON(State::jsonBlock);
    else if (line.isWhole && !m_isClosing)
        beginJSON(State::untaggedBlock);
    else if (isNamed && !m_isClosing)
        holdBlock();
    else
        giveUpBlock();
}

void ReplyPreview::beginJSON(State state)
{
    m_state = state;
    m_watch = {};
    m_body = m_at;
    m_isClosing = false;
}

bool ReplyPreview::readControlBlock()
{
    const auto found = m_reply.indexOf(closing, m_at);
    if (found >= 0)
        endBlock(found + 1);
    else
        m_at = std::max(m_at, m_reply.size() - marks.size());
    return found >= 0;
}

bool ReplyPreview::readControlLine()
{
    const auto found = m_reply.indexOf(u'\n', m_at);
    m_at = found < 0 ? m_reply.size() : found;
    const auto line = withoutLastBlanks(QStringView(m_reply).first(m_at));
    if (found >= 0)
        m_state = line.endsWith(marks) ? State::text : State::controlBlock;
    return true;
}

bool ReplyPreview::readJSONBlock()
{
    const auto rest = QStringView(m_reply).sliced(m_at);
    if (rest.size() < closing.size() && closing.startsWith(rest))
        return false;
    if (!rest.startsWith(closing)) {
        if (!readJSON())
            holdBlock();
    } else if (isActionBlock()) {
        endBlock(m_at + 1);
    } else {
        holdBlock();
    }
    return true;
}

bool ReplyPreview::readUntaggedBlock()
{
    const auto rest = QStringView(m_reply).sliced(m_at);
    const bool mayEnd = m_watch.isComplete() && rest.startsWith(u'`');
    if (mayEnd && rest.size() < marks.size() && marks.startsWith(rest))
        return false;
    if (mayEnd && rest.startsWith(marks) && isActionBlock()) {
        m_at += marks.size();
        m_state = State::lastBlock;
    } else if (!readJSON()) {
        giveUpBlock();
    }
    return true;
}

bool ReplyPreview::readLastBlock()
{
    const auto next = m_reply[m_at];
    if (next.isSpace() || (next == u'`' && m_reply[m_at - 1] == u'`'))
        ++m_at;
    else
        giveUpBlock();
    return true;
}

bool ReplyPreview::readJSON()
{
    m_watch.feed(m_reply[m_at++]);
    return m_watch.isPossible();
}

bool ReplyPreview::isActionBlock() const
{
    const auto body = QStringView(m_reply).sliced(m_body, m_at - m_body);
    return m_watch.isComplete() && ControlBlock::actionPayloads(body);
}

void ReplyPreview::endBlock(qsizetype fence)
{
    m_state = State::marks;
    m_at = fence;
    m_fence = fence;
    m_isClosing = true;
    m_isBehindBlock = true;
}

void ReplyPreview::giveUpBlock()
{
    if (!m_isClosing)
        show(m_fence, m_behindFence);
    m_at = m_behindFence;
    m_state = State::text;
}

void ReplyPreview::holdBlock()
{
    m_isHolding = true;
    giveUpBlock();
}

void ReplyPreview::show(qsizetype from, qsizetype to)
{
    show(QStringView(m_reply).sliced(from, to - from));
}

void ReplyPreview::show(QStringView piece)
{
    // What stood around a block must not make another one.
    if (!piece.isEmpty() && std::exchange(m_isBehindBlock, false)
        && endsBehindFence(QString(lastLine(m_text) % m_held))) {
        if (endsBehindFence(m_held))
            endLine(m_held);
        else
            m_held += u'\n';
    }
    const auto size = m_isHolding ? 0 : visibleSize(piece);
    if (size > 0) {
        m_held += piece.first(size);
        m_text += m_text.isEmpty() ? QStringView(m_held).trimmed() : QStringView(m_held);
        m_held.resize(0);
    }
    m_held += piece.sliced(size);
}

void ReplyPreview::reveal()
{
    if (!std::exchange(m_isHolding, false))
        return;
    const auto held = std::exchange(m_held, QString());
    show(held);
}

} // namespace pobblewig
