#include "memory/librarian/LibrarianAnswers.h"

#include "foundation/Text.h"
#include "memory/librarian/AnswerFields.h"
#include "memory/librarian/CleanupAnswer.h"
#include "memory/librarian/CutAnswer.h"

#include <QJsonDocument>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using LibrarianAnswers::Parsed;

constexpr qsizetype longestAnswer = 1'000'000;
constexpr qsizetype longestPath = 100;
constexpr std::array extractionLists { u"notes", u"observations", u"referenceItems",
    u"proposedSections" };

tl::unexpected<QString> failed(QString problem)
{
    return tl::unexpected(std::move(problem));
}

QString noSummary()
{
    return QStringLiteral("The model's answer has no summary.");
}

Parsed<AnswerFields> answerIn(const QString& text)
{
    if (text.size() > longestAnswer)
        return failed(QStringLiteral("The model's answer is too long."));
    const auto object = LibrarianAnswers::extractJSONObject(text);
    if (!object)
        return failed(QStringLiteral("The model's answer holds no JSON object."));
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(object->toUtf8(), &error);
    if (!document.isObject())
        return failed(QStringLiteral("The model's answer is not valid JSON: %1 at offset %2.")
                          .arg(error.errorString())
                          .arg(error.offset));
    return AnswerFields(*JSONValue::fromJson(document.object()).object());
}

Parsed<AnswerFields> extractionIn(const QString& text)
{
    auto answer = answerIn(text);
    const auto entries = answer ? std::nullopt : CutAnswer::wholeEntries(text);
    if (entries)
        answer = answerIn(*entries);
    if (answer && std::ranges::none_of(extractionLists, [&](const auto* list) {
            return answer->elementCount(QString::fromUtf16(list)).has_value();
        }))
        return failed(QStringLiteral("The model's answer has none of the expected lists."));
    return answer;
}

/// The prompt's example of an optional text tempts models to write "null".
std::optional<QString> thought(const AnswerFields& fields, const QString& name)
{
    const auto text = fields.shortLine(name);
    if (text.isEmpty() || text == u"null")
        return std::nullopt;
    return text;
}

DatedObservation observation(const AnswerFields& fields)
{
    return {
        .summary = fields.line(QStringLiteral("summary")),
        .observedFacts = fields.shortLines(QStringLiteral("observedFacts")),
        .inference = thought(fields, QStringLiteral("inference")),
        .uncertainty = thought(fields, QStringLiteral("uncertainty")),
        .source = fields.named(QStringLiteral("source"), ObservationSource::librarianSynthesis),
        .tags = fields.shortLines(QStringLiteral("tags")),
    };
}

ReferenceItem item(const AnswerFields& fields, const QString& source)
{
    return {
        .path = fields.line(QStringLiteral("path")),
        .title = fields.shortLine(QStringLiteral("title")),
        .summary = fields.shortLine(QStringLiteral("summary")),
        .details = fields.smallMembers(QStringLiteral("details")),
        .source = source,
    };
}

ReferenceSectionMeta section(const AnswerFields& fields)
{
    return {
        .path = fields.line(QStringLiteral("path")),
        .title = fields.shortLine(QStringLiteral("title")),
        .summary = fields.shortLine(QStringLiteral("summary")),
    };
}

bool isNote(const NewNote& note)
{
    return !note.text.isEmpty();
}

bool isObservation(const DatedObservation& observation)
{
    return !observation.summary.isEmpty();
}

template <typename Entry>
bool hasPlace(const Entry& entry)
{
    return !entry.path.isEmpty() && entry.path.size() <= longestPath && !entry.title.isEmpty();
}

template <typename Make, typename IsFine>
auto entriesOf(
    const AnswerFields& answer, const QString& list, const Make& make, const IsFine& isFine)
{
    std::vector<std::invoke_result_t<Make, const AnswerFields&>> entries;
    for (const auto& fields : answer.objects(list)) {
        if (auto entry = make(fields); isFine(entry))
            entries.push_back(std::move(entry));
    }
    return entries;
}

CloseoutIntentItem intent(const AnswerFields& fields)
{
    return { fields.shortLine(QStringLiteral("text")),
        fields.named(QStringLiteral("kind"), IntentKind::task) };
}

bool isIntent(const CloseoutIntentItem& item)
{
    return !item.text.isEmpty();
}

} // namespace

std::optional<QString> LibrarianAnswers::extractJSONObject(const QString& text)
{
    const auto start = text.indexOf(u'{');
    if (start < 0)
        return std::nullopt;
    qsizetype depth = 0;
    for (auto at = start; at < text.size(); ++at) {
        if (text[at] == u'{')
            ++depth;
        else if (text[at] == u'}' && --depth == 0)
            return text.sliced(start, at + 1 - start);
    }
    return std::nullopt;
}

auto LibrarianAnswers::parseExtraction(const QString& text, MemorySource noteSource,
    const QString& itemSource, TimePoint now) -> Parsed<ExtractionResult>
{
    const auto answer = extractionIn(text);
    if (!answer)
        return failed(answer.error());
    const auto noteFrom = [&](const auto& fields) { return fields.note(noteSource, now); };
    const auto itemFrom = [&](const auto& fields) { return item(fields, itemSource); };
    return ExtractionResult {
        .notes = entriesOf(*answer, QStringLiteral("notes"), noteFrom, isNote),
        .observations =
            entriesOf(*answer, QStringLiteral("observations"), observation, isObservation),
        .referenceItems =
            entriesOf(*answer, QStringLiteral("referenceItems"), itemFrom, hasPlace<ReferenceItem>),
        .proposedSections = entriesOf(
            *answer, QStringLiteral("proposedSections"), section, hasPlace<ReferenceSectionMeta>),
    };
}

auto LibrarianAnswers::parseCloseout(const QString& text) -> Parsed<DailyCloseout>
{
    const auto answer = answerIn(text);
    if (!answer)
        return failed(answer.error());
    DailyCloseout closeout {
        .summary = answer->prose(QStringLiteral("dailySummary")),
        .highlights = answer->shortLines(QStringLiteral("chronologicalHighlights")),
        .unfinishedIntent =
            entriesOf(*answer, QStringLiteral("unfinishedIntent"), intent, isIntent),
    };
    if (closeout == DailyCloseout())
        return failed(noSummary());
    return closeout;
}

auto LibrarianAnswers::parseWeekly(const QString& text) -> Parsed<WeeklyRollupResult>
{
    const auto answer = answerIn(text);
    if (!answer)
        return failed(answer.error());
    WeeklyRollupResult rollup {
        .summary = answer->prose(QStringLiteral("summary")),
        .highlights = answer->shortLines(QStringLiteral("chronologicalHighlights")),
        .unresolvedIntent = answer->shortLines(QStringLiteral("unresolvedIntent")),
    };
    if (rollup.summary.isEmpty())
        return failed(noSummary());
    return rollup;
}

auto LibrarianAnswers::parseCleanup(const QString& text,
    const std::vector<MemoryNote>& existingNotes, const std::vector<PatternNote>& existingPatterns,
    TimePoint now, const Calendar& calendar) -> Parsed<CleanupSnapshot>
{
    const auto answer = answerIn(text);
    if (!answer)
        return failed(answer.error());
    CleanupSnapshot rewritten { CleanupAnswer::notes(*answer, existingNotes, now),
        CleanupAnswer::patterns(*answer, existingNotes, existingPatterns, now, calendar) };
    if (rewritten.notes.empty() && rewritten.patterns.empty())
        return failed(QStringLiteral("The model's answer keeps nothing."));
    return rewritten;
}

} // namespace pobblewig
