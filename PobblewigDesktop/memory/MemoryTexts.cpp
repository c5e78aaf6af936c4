#include "PobblewigDesktop/memory/MemoryTexts.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(MemoryTexts)
};

const auto dot = QStringLiteral(" · ");

QString times(int count)
{
    return count == 1 ? Texts::tr("said once") : Texts::tr("said %1 times").arg(count);
}

QString source(MemorySource source)
{
    switch (source) {
    case MemorySource::explicitUser:
        return Texts::tr("You said so.");
    case MemorySource::systemObserved:
        return Texts::tr("Noticed on this computer.");
    case MemorySource::assistantConfirmed:
        return Texts::tr("You confirmed it in the chat.");
    case MemorySource::librarianSynthesis:
        return Texts::tr("Concluded from a conversation.");
    case MemorySource::meetingNotes:
        return Texts::tr("From the notes of a meeting.");
    }
    return {};
}

QString source(ObservationSource source)
{
    switch (source) {
    case ObservationSource::explicitUser:
        return Texts::tr("You said so.");
    case ObservationSource::systemObserved:
        return Texts::tr("Noticed on this computer.");
    case ObservationSource::librarianSynthesis:
        return Texts::tr("Concluded from a conversation.");
    case ObservationSource::intervention:
        return Texts::tr("From a check-in.");
    case ObservationSource::migrated:
        return Texts::tr("From an earlier version.");
    }
    return {};
}

QString sureness(double confidence)
{
    return Texts::tr("Confidence %1 %.").arg(std::lround(confidence * 100));
}

QString span(TimePoint first, TimePoint last, const Calendar& calendar)
{
    const auto from = MemoryTexts::day(first, calendar);
    const auto to = MemoryTexts::day(last, calendar);
    return from == to ? Texts::tr("Said on %1.").arg(from)
                      : Texts::tr("First said on %1, last on %2.").arg(from, to);
}

QString listed(const QString& heading, const std::vector<QString>& lines)
{
    QStringList text(heading);
    for (const auto& line : lines)
        text.append(QStringLiteral("• ") + line);
    return text.join(u'\n');
}

} // namespace

QString MemoryTexts::day(TimePoint time, const Calendar& calendar)
{
    return calendar.locale.toString(calendar.day(time), QStringLiteral("d MMMM yyyy"));
}

QString MemoryTexts::status(MemoryStatus status)
{
    switch (status) {
    case MemoryStatus::active:
        return Texts::tr("Active");
    case MemoryStatus::archived:
        return Texts::tr("Archived");
    case MemoryStatus::superseded:
        return Texts::tr("Replaced by a newer note");
    }
    return {};
}

EntryRow MemoryTexts::row(const MemoryNote& note, const Calendar& calendar)
{
    QStringList known { displayName(note.category), times(note.observationCount),
        day(note.lastObservedAt, calendar) };
    if (note.status != MemoryStatus::active)
        known.append(status(note.status));
    return { note.text, known.join(dot) };
}

QString MemoryTexts::facts(
    const MemoryNote& note, const std::optional<DailySession>& origin, const Calendar& calendar)
{
    QStringList facts { source(note.source), span(note.createdAt, note.lastObservedAt, calendar) };
    if (note.observationCount > 1)
        facts.append(Texts::tr("Said %1 times.").arg(note.observationCount));
    if (origin)
        facts.append(
            Texts::tr("Noted in the conversation of %1.").arg(day(origin->startedAt, calendar)));
    if (note.confidence)
        facts.append(sureness(*note.confidence));
    if (note.isTemporary && note.expiresAt)
        facts.append(Texts::tr("Forgotten on %1.").arg(day(*note.expiresAt, calendar)));
    facts.append(status(note.status) + u'.');
    return facts.join(u' ');
}

EntryRow MemoryTexts::row(const PatternNote& pattern, const Calendar& calendar)
{
    return { pattern.text,
        QStringList { Texts::tr("Seen %1 times").arg(pattern.evidenceCount),
            day(pattern.lastObservedAt, calendar) }
            .join(dot) };
}

QString MemoryTexts::facts(const PatternNote& pattern, const Calendar& calendar)
{
    return Texts::tr("First seen on %1, last on %2. %3")
        .arg(day(pattern.firstObservedAt, calendar), day(pattern.lastObservedAt, calendar),
            sureness(pattern.confidence));
}

QString MemoryTexts::text(const PatternNote& pattern, const std::vector<MemoryNote>& notes)
{
    std::vector<QString> lines;
    for (const auto& id : pattern.sourceNoteIDs) {
        const auto note = std::ranges::find(notes, id, &MemoryNote::id);
        lines.push_back(note != notes.end() ? note->text : Texts::tr("A note that is gone"));
    }
    return pattern.text + QStringLiteral("\n\n") + listed(Texts::tr("Seen in:"), lines);
}

EntryRow MemoryTexts::row(const DatedObservation& observation, const Calendar& calendar)
{
    const auto when = calendar.dateTime(observation.occurredAt);
    QStringList known { day(observation.occurredAt, calendar),
        calendar.locale.toString(when.time(), QLocale::ShortFormat) };
    for (const auto& tag : observation.tags)
        known.append(tag);
    return { observation.summary, known.join(dot) };
}

QString MemoryTexts::text(const DatedObservation& observation)
{
    QStringList parts(observation.summary);
    if (!observation.observedFacts.empty())
        parts.append(listed(Texts::tr("Seen or said:"), observation.observedFacts));
    if (observation.inference)
        parts.append(Texts::tr("Concluded: %1").arg(*observation.inference));
    if (observation.uncertainty)
        parts.append(Texts::tr("Uncertain: %1").arg(*observation.uncertainty));
    return parts.join(QStringLiteral("\n\n"));
}

QString MemoryTexts::facts(const DatedObservation& observation, const Calendar& calendar)
{
    QStringList facts { calendar.moment(observation.occurredAt) + u'.',
        source(observation.source) };
    if (observation.archivedIntoPeriodID)
        facts.append(Texts::tr("Part of a day's summary."));
    return facts.join(u' ');
}

} // namespace pobblewig
