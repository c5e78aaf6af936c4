#include "PobblewigDemoModel/DemoExtraction.h"

#include "PobblewigDemoModel/DemoGrammar.h"
#include "PobblewigDemoModel/DemoMaterial.h"
#include "PobblewigDemoModel/DemoNotes.h"
#include "PobblewigDemoModel/DemoReferences.h"

#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>
#include <optional>

namespace pobblewig {

namespace {

QStringList offeredPaths(const QString& prompt)
{
    return DemoMaterial::after(prompt, u"Use an EXISTING path from this list: ", u". If none fits")
        .split(QStringLiteral(", "));
}

/// Lists each finding once.
JSONValue answer(const DemoFindings& findings)
{
    JSONValue::Object lists { { QStringLiteral("notes"), JSONValue::Array() } };
    for (auto finding = findings.begin(); finding != findings.end(); ++finding) {
        if (std::find(findings.begin(), finding, *finding) != finding)
            continue;
        auto list =
            lists[finding->list].array() ? *lists[finding->list].array() : JSONValue::Array();
        list.emplace_back(finding->entry);
        lists[finding->list] = list;
    }
    return lists;
}

void add(DemoFindings& findings, std::optional<DemoFinding> finding)
{
    if (finding)
        findings.push_back(*std::move(finding));
}

/// Counts the lifetime from the answer instead of the sentence. Returns nothing if it is over.
std::optional<DemoFinding> aged(DemoFinding finding, const QDateTime& said, const QDateTime& now)
{
    const auto life = finding.entry.find(QStringLiteral("expiresInHours"));
    if (life == finding.entry.end())
        return finding;
    const auto hoursLeft = *life->second.number() - double(said.secsTo(now)) / 3600;
    if (hoursLeft <= 0)
        return std::nullopt;
    life->second = hoursLeft;
    return finding;
}

} // namespace

JSONValue DemoExtraction::fromConversation(const QString& prompt, const QDateTime& now)
{
    const auto window = DemoMaterial::lastAfter(prompt, u"\n\nConversation window:\n");
    const auto paths = offeredPaths(prompt);
    DemoFindings findings;
    for (const auto& [time, text] : DemoMaterial::userStatements(window, now.timeZone())) {
        for (const auto& finding : findingsIn(text, time, paths))
            add(findings, aged(finding, time, now));
    }
    return answer(findings);
}

JSONValue DemoExtraction::fromMeeting(const QString& prompt, const QDateTime& now)
{
    static const QRegularExpression bullet(QStringLiteral(R"(^\W+|\W+$|^\d+[.)] )"));
    const auto paths = offeredPaths(prompt);
    DemoFindings findings;
    for (auto line : DemoMaterial::lastAfter(prompt, u"\n\nMeeting notes:\n").split(u'\n'))
        add(findings, DemoReferences::itemIn(line.remove(bullet), now, paths));
    return answer(findings);
}

DemoFindings DemoExtraction::findingsIn(
    const QString& statement, const QDateTime& now, const QStringList& paths)
{
    DemoFindings findings;
    add(findings, DemoNotes::noteIn(statement, now));
    add(findings, DemoNotes::observationIn(statement));
    const auto stated = DemoGrammar::correctedTo(statement).value_or(statement);
    add(findings, DemoReferences::itemIn(stated, now, paths));
    add(findings, DemoReferences::sectionIn(stated));
    return findings;
}

} // namespace pobblewig
