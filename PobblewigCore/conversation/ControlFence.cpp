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
    NamedTag { u"", Tag::none },
};

constexpr QStringView closing = u"\n```";

/// Counts no further than tells whether another fence follows.
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

/// Of a run of that many: how many precede its last fence.
qsizetype beforeLastFence(qsizetype run)
{
    return run / marks.size() * marks.size() - marks.size();
}

qsizetype behindBlanks(QStringView text, qsizetype from)
{
    while (from < text.size() && isBlank(text[from]))
        ++from;
    return from;
}

/// Behind the fence whose last backticks those are, if another block begins with them: before it.
qsizetype behindClosing(QStringView text, qsizetype fence)
{
    const auto run = backticks(text, fence);
    if (beforeLastFence(run) > 0)
        return fence + marks.size();
    const auto tag = tagLine(text, fence).tag;
    return isControl(tag) || tag == Tag::json ? fence : fence + run;
}

std::optional<qsizetype> controlBlockEnd(QStringView text, qsizetype from)
{
    const auto found = text.indexOf(closing, from);
    return found < 0 ? text.size() : behindClosing(text, found + 1);
}

/// Looks no further than the text can be an action block.
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
    if (isControl(line.tag))
        return controlBlockEnd(text, line.end);
    return line.tag == Tag::json ? actionBlockEnd(text, line.end) : std::nullopt;
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
    for (const auto& [name, tag] : namedTags) {
        if (!text.sliced(start).startsWith(name))
            continue;
        const auto end = behindBlanks(text, start + name.size());
        if (end == text.size() || text[end] == u'\n')
            return { tag, end };
    }
    return {};
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
    if (line.tag == Tag::other || line.end == before.size())
        return std::nullopt;
    return Trailing { line.tag, start, before.sliced(line.end + 1) };
}

QString ControlFence::strip(QStringView text)
{
    QString kept;
    qsizetype from = 0;
    for (auto at = text.indexOf(marks); at >= 0;) {
        const auto end = blockEnd(text, at);
        if (end) {
            kept += text.sliced(from, at - from);
            from = *end;
        }
        at = text.indexOf(marks, end.value_or(at + marks.size()));
    }
    kept += text.sliced(from);
    return kept.trimmed();
}

} // namespace pobblewig
