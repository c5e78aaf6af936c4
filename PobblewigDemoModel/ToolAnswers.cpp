#include "PobblewigDemoModel/ToolAnswers.h"

#include "foundation/Text.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

constexpr qsizetype longestQuote = 600;
constexpr qsizetype longestRefusal = 200;

QStringList captured(const DemoResults& results, const QString& tool, const QString& pattern)
{
    const QRegularExpression words(pattern, QRegularExpression::MultilineOption);
    QStringList found;
    for (const auto& result : results) {
        if (result.name != tool)
            continue;
        for (auto matches = words.globalMatch(result.text); matches.hasNext();)
            found.append(matches.next().captured(1));
    }
    return found;
}

QStringList ids(const DemoResults& results, const QString& tool)
{
    return captured(results, tool, QStringLiteral(R"(^- \[id:([0-9a-f]{8})\])"));
}

QString quoted(QString text, qsizetype longest)
{
    static const QRegularExpression handles(QStringLiteral(R"(\[id:[0-9a-f]+\] ?)"));
    text.remove(handles);
    const auto quote = Text::firstCharacters(text, longest);
    return quote == text ? quote : quote + u'…';
}

/// The beginning of the app's answer, and the reply to it, which may follow the sentence that
/// announced the change.
struct Wording {
    QStringView beginning;
    QStringView said;
    bool followsTheSentence = false;
};

constexpr std::array wordings {
    Wording { u"registered as a pending proposal",
        u"It waits for you in the banner: confirm it there, or dismiss it.", true },
    Wording { u"auto-approved", u"Done: you allow this kind of change always.", true },
    Wording { u"noted", u"Done. It ends by itself.", true },
    Wording { u"recorded observation", u"I wrote that down, with today's date." },
    Wording { u"pattern recorded", u"Noted as a pattern." },
    Wording { u"not recorded", u"Not enough for a pattern: that takes notes of two days." },
    Wording { u"no ", u"I looked, and found nothing." },
};

QString refusal(const QString& text)
{
    return QStringLiteral("That did not work. The app says: \"%1\"")
        .arg(quoted(text, longestRefusal));
}

QString spokenCapture(const QString& text, bool hasScreenshot)
{
    const auto what = quoted(text.section(QStringLiteral(" — "), 0, 0), longestRefusal);
    return hasScreenshot
        ? QStringLiteral("The picture came, %1. A demo model has no eyes; one that has them would "
                         "tell you now what it sees.")
              .arg(what)
        : QStringLiteral("The app says that it %1, but no picture came with it.").arg(what);
}

QString spokenOne(const DemoToolResult& result, const QString& sentence, bool hasScreenshot)
{
    const auto& text = result.text;
    if (text.startsWith(u"error") || text.startsWith(u"refused"))
        return refusal(text);
    if (text.startsWith(u"captured: "))
        return spokenCapture(text, hasScreenshot);
    const auto begins = [&](const Wording& wording) { return text.startsWith(wording.beginning); };
    const auto found = std::ranges::find_if(wordings, begins);
    if (found == wordings.end())
        return QStringLiteral("This is what I found:\n\n") + quoted(text, longestQuote);
    const auto before =
        found->followsTheSentence && !sentence.isEmpty() ? sentence + u' ' : QString();
    return before + found->said.toString();
}

} // namespace

bool ToolAnswers::has(const DemoResults& results, const QString& tool)
{
    return std::ranges::find(results, tool, &DemoToolResult::name) != results.end();
}

std::optional<QString> ToolAnswers::firstID(const DemoResults& results, const QString& tool)
{
    const auto found = ids(results, tool);
    return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

std::optional<QString> ToolAnswers::lastID(const DemoResults& results, const QString& tool)
{
    const auto found = ids(results, tool);
    return found.isEmpty() ? std::nullopt : std::optional(found.last());
}

QStringList ToolAnswers::noteTexts(const DemoResults& results, const QString& tool)
{
    return captured(results, tool, QStringLiteral(R"(^- \[id:[0-9a-f]+\] \([a-zA-Z]+\) (.+)$)"));
}

QString ToolAnswers::spoken(const DemoResults& results, const QString& sentence, bool hasScreenshot)
{
    QStringList said;
    for (const auto& result : results)
        said.append(spokenOne(result, sentence, hasScreenshot));
    said.removeDuplicates();
    return said.join(QStringLiteral("\n\n"));
}

} // namespace pobblewig
