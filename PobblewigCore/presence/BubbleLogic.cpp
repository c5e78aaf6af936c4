#include "presence/BubbleLogic.h"

#include "foundation/Text.h"
#include "markdown/MarkdownReader.h"

#include <QCoreApplication>

#include <algorithm>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using Kind = Bubble::Kind;

constexpr qsizetype mostReminders = 5;
/// More than fits into a bubble, whatever its signs take.
constexpr qsizetype longestBeginning = 2000;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(BubbleLogic)
};

void dropOldReminders(BubbleLogic::Bubbles& waiting)
{
    if (std::ranges::count(waiting, Kind::reminder, &Bubble::kind) > mostReminders)
        waiting.erase(std::ranges::find(waiting, Kind::reminder, &Bubble::kind));
}

} // namespace

BubbleLogic::Bubbles BubbleLogic::withAdded(Bubbles waiting, Bubble bubble)
{
    if (bubble.kind != Kind::reminder)
        waiting = without(std::move(waiting), bubble.kind);
    waiting.push_back(std::move(bubble));
    std::ranges::stable_sort(waiting, {}, &Bubble::kind);
    dropOldReminders(waiting);
    return waiting;
}

BubbleLogic::Bubbles BubbleLogic::without(Bubbles waiting, Kind kind)
{
    std::erase_if(waiting, [kind](const auto& bubble) { return bubble.kind == kind; });
    return waiting;
}

std::optional<std::chrono::milliseconds> BubbleLogic::duration(Kind kind)
{
    switch (kind) {
    case Kind::reminder:
        return std::nullopt;
    case Kind::farewell:
        return 500ms;
    case Kind::answer:
    case Kind::problem:
    case Kind::proposals:
    case Kind::greeting:
    case Kind::sight:
        return 12s;
    }
    Q_UNREACHABLE();
}

bool BubbleLogic::leavesMark(Kind kind)
{
    return kind == Kind::reminder || kind == Kind::answer || kind == Kind::problem
        || kind == Kind::proposals;
}

QString BubbleLogic::firstLine(const QString& markdown)
{
    const auto shown = MarkdownReader::read(markdown.left(longestBeginning)).text;
    for (const auto line : QStringView(shown).tokenize(u'\n')) {
        auto words = fitted(line.toString());
        if (!words.isEmpty())
            return words;
    }
    return {};
}

QString BubbleLogic::fitted(const QString& text)
{
    return Text::plainLine(text, qsizetype(lines) * charactersPerLine);
}

QString BubbleLogic::waitingInWords(qsizetype proposals)
{
    return proposals == 1 ? Texts::tr("1 thing waits for you")
                          : Texts::tr("%n things wait for you", nullptr, int(proposals));
}

} // namespace pobblewig
