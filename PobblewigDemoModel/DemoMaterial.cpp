#include "PobblewigDemoModel/DemoMaterial.h"

#include "PobblewigDemoModel/DemoGrammar.h"
#include "PobblewigDemoModel/DemoWords.h"

#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>

namespace pobblewig {

namespace {

using DemoMaterial::Line;

QString between(const QString& prompt, qsizetype start, qsizetype end)
{
    return prompt.mid(start, end < 0 ? -1 : end - start);
}

/// The words that identify what to forget; empty if the statement is not such a request.
QStringList forgottenWords(const QString& statement)
{
    static const QRegularExpression wish(
        QStringLiteral(
            R"(^forget\b(?: about| that| what I (?:said|told you)(?: about)?)?(?<what>.+))"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression kinds(
        QStringLiteral(R"(^(?:note|deadline|exam|section|old)s?$)"),
        QRegularExpression::CaseInsensitiveOption);
    auto words = DemoWords::keywords(wish.match(statement).captured(u"what"))
                     .split(u' ', Qt::SkipEmptyParts);
    words.removeIf([](const QString& word) { return kinds.match(word).hasMatch(); });
    return words;
}

void forget(std::vector<Line>& lines, const QStringList& words)
{
    std::erase_if(lines, [&](const auto& line) {
        return std::ranges::all_of(
            words, [&](const auto& word) { return line.text.contains(word, Qt::CaseInsensitive); });
    });
}

} // namespace

QString DemoMaterial::after(const QString& prompt, QStringView heading, QStringView end)
{
    const auto start = prompt.indexOf(heading);
    if (start < 0)
        return {};
    const auto begin = start + heading.size();
    return between(prompt, begin, prompt.indexOf(end, begin));
}

QString DemoMaterial::lastAfter(const QString& prompt, QStringView heading)
{
    const auto start = prompt.indexOf(heading);
    if (start < 0)
        return {};
    // The user's text may contain these words, too.
    const auto form = prompt.lastIndexOf(QStringLiteral("\n\nReturn ONLY JSON"));
    return between(prompt, start + heading.size(), form);
}

auto DemoMaterial::stampedLines(const QString& text, const QTimeZone& zone) -> std::vector<Line>
{
    static const QRegularExpression stamp(
        QStringLiteral(R"(^\[(?<time>\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ)\] (?<text>.*)$)"));
    std::vector<Line> lines;
    for (const auto& line : text.split(u'\n')) {
        const auto match = stamp.match(line);
        if (match.hasMatch()) {
            const auto time = QDateTime::fromString(match.captured(u"time"), Qt::ISODate);
            lines.push_back({ time.toTimeZone(zone), match.captured(u"text") });
        } else if (!lines.empty()) {
            lines.back().text += u'\n' + line;
        }
    }
    return lines;
}

auto DemoMaterial::userStatements(const QString& conversation, const QTimeZone& zone)
    -> std::vector<Line>
{
    const auto user = QStringLiteral("user: ");
    std::vector<Line> statements;
    for (const auto& line : stampedLines(conversation, zone)) {
        if (!line.text.startsWith(user))
            continue;
        for (const auto& statement : DemoGrammar::statements(line.text.mid(user.size()))) {
            if (const auto words = forgottenWords(statement); !words.isEmpty())
                forget(statements, words);
            else
                statements.push_back({ line.time, statement });
        }
    }
    return statements;
}

} // namespace pobblewig
