#include "conversation/ControlFence.h"

#include "conversation/ControlBlock.h"
#include "conversation/EnvelopeWatch.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using namespace ControlFence;

struct NamedTag {
    QStringView name;
    Tag tag;
};

constexpr std::array namedTags {
    NamedTag { u"buddy-actions", Tag::buddyActions },
    NamedTag { u"buddy-tools", Tag::buddyTools },
    NamedTag { u"json", Tag::json },
};

constexpr QStringView closing = u"\n```";

/// Counts only as far as needed to tell whether another fence follows.
qsizetype backticks(QStringView text, qsizetype from)
{
    const auto run = text.sliced(from).first(std::min(text.size() - from, 2 * marks.size()));
    return std::ranges::find_if(run, [](QChar mark) { return mark != u'`'; }) - run.begin();
}

qsizetype backticksBefore(QStringView text, qsizetype end)
{
    auto from = end;
    while (from > 0 && text[from - 1] == u'`')
        --from;
    return end - from;
}

qsizetype behindBlanks(QStringView text, qsizetype from)
{
    while (from < text.size() && isBlank(text[from]))
        ++from;
    return from;
}

/// The end of a closing fence, or its start if the same backticks open another block.
qsizetype behindClosing(QStringView text, qsizetype fence)
{
    const auto run = backticks(text, fence);
    if (beforeLastFence(run) > 0)
        return fence + marks.size();
    const auto line = tagLine(text, fence);
    return line.isWhole && line.tag != Tag::none ? fence : fence + run;
}

qsizetype controlBlockEnd(QStringView text, qsizetype from)
{
    const auto found = text.indexOf(closing, from);
    return found < 0 ? text.size() : behindClosing(text, found + 1);
}

/// Reads only as far as the text can still be an action block.
std::optional<qsizetype> actionBlockEnd(QStringView text, qsizetype from)
{
    EnvelopeWatch watch;
    auto at = from;
    while (at < text.size() && watch.isPossible() && !text.sliced(at).startsWith(closing))
        watch.feed(text[at++]);
    if (!watch.isComplete() || !ControlBlock::actionPayloads(text.sliced(from, at - from)))
        return std::nullopt;
    return at == text.size() ? at : behindClosing(text, at + 1);
}

std::optional<qsizetype> blockEnd(QStringView text, qsizetype fence)
{
    const auto line = tagLine(text, fence);
    if (!line.isWhole || line.tag == Tag::none)
        return std::nullopt;
    return isControl(line.tag) ? controlBlockEnd(text, line.end) : actionBlockEnd(text, line.end);
}

} // namespace

bool ControlFence::isBlank(QChar character)
{
    return character == u' ' || character == u'\t' || character == u'\r';
}

TagLine ControlFence::tagLine(QStringView text, qsizetype fence)
{
    const auto run = backticks(text, fence);
    if (beforeLastFence(run) > 0)
        return {};
    const auto start = behindBlanks(text, fence + run);
    const auto rest = text.sliced(start);
    if (rest.startsWith(u'\n'))
        return { .tag = Tag::none, .end = start, .isWhole = true };
    for (const auto& [name, tag] : namedTags) {
        if (name.startsWith(rest) && rest.size() < name.size())
            return { .end = text.size() };
        if (!rest.startsWith(name))
            continue;
        const auto end = behindBlanks(text, start + name.size());
        return { .tag = tag, .end = end, .isWhole = end == text.size() || text[end] == u'\n' };
    }
    return { .end = start };
}

auto ControlFence::trailing(QStringView text) -> std::optional<Trailing>
{
    const auto end = text.lastIndexOf(marks) + marks.size();
    if (end < marks.size() || !text.sliced(end).trimmed().isEmpty())
        return std::nullopt;
    const auto closingRun = backticksBefore(text, end);
    const auto before = text.first(end - closingRun);
    const auto openingEnd = before.lastIndexOf(marks) + marks.size();
    if (beforeLastFence(closingRun) > 0 || openingEnd < marks.size())
        return std::nullopt;
    const auto run = backticksBefore(before, openingEnd);
    const auto start = openingEnd - run + beforeLastFence(run);
    const auto line = tagLine(before, start);
    if (!line.isWhole || line.end == before.size())
        return std::nullopt;
    return Trailing { line.tag, start, before.sliced(line.end + 1) };
}

QStringView ControlFence::lastLine(QStringView text)
{
    return text.sliced(text.lastIndexOf(u'\n') + 1);
}

bool ControlFence::hasControlBlock(QStringView text)
{
    for (auto at = text.indexOf(marks); at >= 0;) {
        const auto end = blockEnd(text, at);
        if (end && isControl(tagLine(text, at).tag))
            return true;
        at = text.indexOf(marks, end.value_or(at + marks.size()));
    }
    return false;
}

bool ControlFence::endsBehindFence(QStringView text)
{
    return lastLine(text).contains(marks);
}

void ControlFence::endLine(QString& kept)
{
    if (!endsBehindFence(kept))
        return;
    const auto fence = kept.lastIndexOf(marks);
    const auto tag = QStringView(kept).sliced(fence + marks.size()).trimmed();
    if (tag == u"buddy-actions" || tag == u"buddy-tools")
        kept.truncate(fence);
    else
        kept += u'\n';
}

QString ControlFence::strip(QStringView text)
{
    QString kept;
    qsizetype from = 0;
    for (auto at = text.indexOf(marks); at >= 0;) {
        const auto end = blockEnd(text, at);
        if (end) {
            kept += text.sliced(from, at - from);
            endLine(kept);
            from = *end;
        }
        at = text.indexOf(marks, end.value_or(at + marks.size()));
    }
    kept += text.sliced(from);
    return kept.trimmed();
}

} // namespace pobblewig
