#include "PobblewigDemoModel/DemoCloseout.h"

#include "PobblewigDemoModel/DemoExtraction.h"
#include "PobblewigDemoModel/DemoGrammar.h"
#include "PobblewigDemoModel/DemoIntents.h"
#include "PobblewigDemoModel/DemoMaterial.h"

#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>

namespace pobblewig {

namespace {

using DemoIntents::Intent;
using DemoMaterial::Line;

constexpr qsizetype mostTold = 3;
constexpr size_t mostHighlightsOfDay = 8;
constexpr qsizetype mostHighlightsOfWeek = 10;

const QString& joint()
{
    static const auto text = QStringLiteral("; ");
    return text;
}

QString unlessMissing(const QString& text, QStringView placeholder)
{
    return text == placeholder ? QString() : text;
}

/// Whether a statement says more than "hello".
bool isWorthTelling(const Line& statement)
{
    static const QStringList anywhere { QStringLiteral("misc") };
    return DemoIntents::intentIn(statement)
        || !DemoExtraction::findingsIn(statement.text, statement.time, anywhere).empty();
}

/// The statements worth reporting, or all of them if none is.
std::vector<Line> toTell(const std::vector<Line>& statements)
{
    std::vector<Line> told;
    std::ranges::copy_if(statements, std::back_inserter(told), isWorthTelling);
    return told.empty() ? statements : told;
}

QString enumerated(const QStringList& texts)
{
    auto list = texts.mid(0, mostTold).join(QStringLiteral(", "));
    if (texts.size() > mostTold)
        list += QStringLiteral(" and more");
    return list;
}

QString summary(const std::vector<Line>& told, const std::vector<Line>& observations,
    const std::vector<Intent>& open)
{
    QStringList quotes;
    for (const auto& statement : told)
        quotes.append(u'"' + statement.text + u'"');
    quotes.removeDuplicates();
    QStringList sentences { quotes.isEmpty()
            ? QStringLiteral("A quiet day without many words.")
            : QStringLiteral("The user shared %1.").arg(enumerated(quotes)) };
    if (!observations.empty())
        sentences.append(QStringLiteral("Noted on the way: ") + observations.front().text);
    QStringList ends;
    for (const auto& intent : open)
        ends.append(intent.text);
    if (!ends.isEmpty())
        sentences.append(QStringLiteral("Still ahead: %1.").arg(enumerated(ends)));
    sentences.append(QStringLiteral("It was good to be along."));
    return sentences.join(u' ');
}

/// For example "14:07 The user likes tea.", in the order of the day.
JSONValue::Array highlights(std::vector<Line> lines, const std::vector<Line>& observations)
{
    for (auto& line : lines)
        line.text = DemoGrammar::aboutTheUser(line.text);
    for (const auto& observation : observations) {
        if (std::ranges::find(lines, observation.text, &Line::text) == lines.end())
            lines.push_back(observation);
    }
    std::ranges::stable_sort(lines, {}, &Line::time);
    JSONValue::Array told;
    for (const auto& line : lines) {
        if (told.size() < mostHighlightsOfDay)
            told.push_back(line.time.toString(QStringLiteral("HH:mm ")) + line.text);
    }
    return told;
}

JSONValue::Array listed(const std::vector<Intent>& intents)
{
    JSONValue::Array list;
    for (const auto& intent : intents)
        list.push_back(JSONValue::Object {
            { QStringLiteral("text"), intent.text }, { QStringLiteral("kind"), intent.kind } });
    return list;
}

JSONValue::Array listed(const QStringList& texts)
{
    return { texts.begin(), texts.end() };
}

struct Daily {
    QString day;
    QString summary;
    QStringList highlights;
    QStringList unresolved;
};

std::vector<Daily> dailiesIn(const QString& text)
{
    static const QRegularExpression day(QStringLiteral(R"(^\d{4}-\d\d-\d\d$)"));
    static const auto highlights = QStringLiteral("highlights: ");
    static const auto unresolved = QStringLiteral("unresolved: ");
    std::vector<Daily> dailies;
    for (const auto& line : text.split(u'\n', Qt::SkipEmptyParts)) {
        if (day.match(line).hasMatch())
            dailies.push_back({ line, {}, {}, {} });
        else if (dailies.empty())
            continue;
        else if (line.startsWith(highlights))
            dailies.back().highlights = line.mid(highlights.size()).split(joint());
        else if (line.startsWith(unresolved))
            dailies.back().unresolved = line.mid(unresolved.size()).split(joint());
        else
            dailies.back().summary += line + u' ';
    }
    return dailies;
}

QString firstSentence(const QString& text)
{
    static const QRegularExpression end(QStringLiteral(R"([.!?](?= |$))"));
    const auto match = end.match(text);
    return (match.hasMatch() ? text.left(match.capturedEnd()) : text).trimmed();
}

/// Takes an equal share of highlights from each day.
QStringList highlightsOf(const std::vector<Daily>& dailies)
{
    const auto share = mostHighlightsOfWeek / std::max<qsizetype>(std::ssize(dailies), 1);
    QStringList told;
    for (const auto& daily : dailies) {
        for (const auto& highlight : daily.highlights.mid(0, std::max<qsizetype>(share, 1)))
            told.append(daily.day + u' ' + highlight);
    }
    return told.mid(0, mostHighlightsOfWeek);
}

} // namespace

JSONValue DemoCloseout::ofDay(const QString& prompt, const QDateTime& now)
{
    const auto zone = now.timeZone();
    const auto earlier =
        DemoMaterial::after(prompt, u"unfinished intent: ", u"\n\nToday's observations:\n");
    const auto noted = DemoMaterial::after(
        prompt, u"\n\nToday's observations:\n", u"\n\nToday's activity summary:\n");
    const auto statements = DemoMaterial::userStatements(
        DemoMaterial::lastAfter(prompt, u"\n\nToday's conversation:\n"), zone);
    const auto observations = DemoMaterial::stampedLines(noted, zone);
    const auto told = toTell(statements);
    const auto open = DemoIntents::openAfter(
        unlessMissing(earlier, u"(none tracked)").split(joint(), Qt::SkipEmptyParts), statements,
        now);
    return JSONValue::Object {
        { QStringLiteral("dailySummary"), summary(told, observations, open) },
        { QStringLiteral("chronologicalHighlights"), highlights(told, observations) },
        { QStringLiteral("unfinishedIntent"), listed(open) },
    };
}

JSONValue DemoCloseout::ofWeek(const QString& prompt)
{
    const auto dailies =
        dailiesIn(DemoMaterial::lastAfter(prompt, u"Daily summaries (chronological):\n"));
    QStringList sentences;
    for (const auto& daily : dailies)
        sentences.append(daily.day + QStringLiteral(": ") + firstSentence(daily.summary));
    return JSONValue::Object {
        { QStringLiteral("summary"), sentences.join(u' ') },
        { QStringLiteral("chronologicalHighlights"), listed(highlightsOf(dailies)) },
        // Each day has adopted what the previous day left unfinished.
        { QStringLiteral("unresolvedIntent"),
            listed(dailies.empty() ? QStringList() : dailies.back().unresolved) },
    };
}

} // namespace pobblewig
