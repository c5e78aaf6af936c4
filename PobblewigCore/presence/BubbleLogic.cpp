#include "presence/BubbleLogic.h"

#include "foundation/Text.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using Kind = Bubble::Kind;

constexpr qsizetype mostReminders = 5;
/// More than fits into a bubble, whatever is taken out of it.
constexpr qsizetype longestLine = 1000;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(BubbleLogic)
};

struct Sign {
    QRegularExpression pattern;
    QString replacement;
};

/// What Markdown writes around words and at the beginning of lines.
const std::vector<Sign>& signs()
{
    const auto sign = [](const QString& pattern, const QString& replacement) {
        return Sign { QRegularExpression(pattern), replacement };
    };
    static const std::vector<Sign> all {
        sign(QStringLiteral(R"(^\s*(```.*|~~~.*|[-*_=|:\s]+)$)"), {}),
        sign(QStringLiteral(R"(^(\s*(#{1,6}|>|[-*+]|\d{1,9}[.)])\s+)+)"), {}),
        sign(QStringLiteral(R"(^\[[ xX]\]\s+)"), {}),
        sign(QStringLiteral(R"(!?\[([^\[\]]*)\]\([^()]*\))"), QStringLiteral(R"(\1)")),
        sign(QStringLiteral(R"((\*\*\*|\*\*|__|~~)(?=\S)(.+?)(?<=\S)\1)"), QStringLiteral(R"(\2)")),
        sign(QStringLiteral(R"((?<![\w*])\*(?=\S)([^*]+?)(?<=\S)\*(?![\w*]))"),
            QStringLiteral(R"(\1)")),
        sign(QStringLiteral(R"((?<!\w)_(?=\S)([^_]+?)(?<=\S)_(?!\w))"), QStringLiteral(R"(\1)")),
        sign(QStringLiteral("`+"), {}),
    };
    return all;
}

QString withoutSigns(QString line)
{
    for (const auto& [pattern, replacement] : signs())
        line.replace(pattern, replacement);
    return line;
}

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
    case Kind::proposals:
    case Kind::greeting:
    case Kind::sight:
        return 12s;
    }
    Q_UNREACHABLE();
}

bool BubbleLogic::leavesMark(Kind kind)
{
    return kind == Kind::reminder || kind == Kind::answer || kind == Kind::proposals;
}

QString BubbleLogic::firstLine(const QString& markdown)
{
    for (const auto line : QStringView(markdown).tokenize(u'\n')) {
        const auto words = withoutSigns(line.trimmed().left(longestLine).toString());
        auto shown = Text::plainLine(words, qsizetype(lines) * charactersPerLine);
        if (!shown.isEmpty())
            return shown;
    }
    return {};
}

QString BubbleLogic::waitingInWords(qsizetype proposals)
{
    return proposals == 1 ? Texts::tr("1 thing waits for you")
                          : Texts::tr("%n things wait for you", nullptr, int(proposals));
}

} // namespace pobblewig
