#include "memory/MemoryExport.h"

#include "foundation/ISO8601.h"

#include <QStringBuilder>
#include <QStringList>

#include <map>
#include <utility>

namespace pobblewig {

namespace {

constexpr int mostObservations = 200;

QString observationLines(const ObservationStore& observations)
{
    const auto newest = observations.search({ .limit = mostObservations });
    QStringList lines;
    lines.reserve(std::ssize(newest));
    for (const auto& observation : newest)
        lines.append(QStringLiteral("- %1: %2")
                         .arg(ISO8601::format(observation.occurredAt), observation.summary));
    return lines.join(u'\n');
}

/// The stores' contents under one roof.
struct Everything {
    std::vector<MemoryNote> notes;
    std::vector<PatternNote> patterns;
    std::vector<ReferenceSectionMeta> sections;
    std::vector<ReferenceItem> items;
    std::vector<DailySession> sessions;
    std::vector<PeriodSummary> summaries;
    std::vector<DatedObservation> observations;

    static constexpr auto jsonFields()
    {
        using namespace pobblewig::json;
        return std::tuple { required("notes", &Everything::notes),
            required("patterns", &Everything::patterns),
            required("referenceSections", &Everything::sections),
            required("referenceItems", &Everything::items),
            required("sessions", &Everything::sessions),
            required("summaries", &Everything::summaries),
            required("observations", &Everything::observations) };
    }
};

/// Markdown that grows by headings and lines; a heading without lines is left out.
class Sheet {
public:
    void head(const QString& heading) { m_heading = u"\n## " % heading % u"\n\n"; }
    void line(const QString& text)
    {
        m_text += std::exchange(m_heading, {}) % u"- " % text % u'\n';
    }
    QByteArray bytes() const { return m_text.toUtf8(); }

private:
    QString m_text = QStringLiteral("# Pobblewig memory\n");
    QString m_heading;
};

void addNotes(Sheet& sheet, const MemoryStore& store, const Calendar& calendar)
{
    std::map<MemoryCategory, std::vector<const MemoryNote*>> byCategory;
    for (const auto& note : store.notes())
        byCategory[note.category].push_back(&note);
    for (const auto& [category, notes] : byCategory) {
        sheet.head(displayName(category));
        for (const auto* note : notes)
            sheet.line(note->text
                + QStringLiteral(" (%1%2)").arg(calendar.day(note->createdAt).toString(Qt::ISODate),
                    note->status == MemoryStatus::active ? QString()
                                                         : QStringLiteral(", archived")));
    }
    sheet.head(QStringLiteral("Patterns"));
    for (const auto& pattern : store.allPatterns())
        sheet.line(pattern.text);
}

void addReference(Sheet& sheet, const ReferenceMemoryStore& store)
{
    std::map<QString, std::vector<const ReferenceItem*>> byPath;
    for (const auto& item : store.allItems())
        byPath[item.path].push_back(&item);
    for (const auto& [path, items] : byPath) {
        const auto section = store.readSection(path);
        sheet.head(section ? section->meta.title : path);
        for (const auto* item : items)
            sheet.line(
                QStringLiteral("**%1**: %2%3").arg(item->title, item->summary, detailsText(*item)));
    }
}

void addDays(Sheet& sheet, const MemoryTiers& memory, const Calendar& calendar)
{
    sheet.head(QStringLiteral("Days and weeks"));
    for (const auto& summary : memory.summaries.all())
        sheet.line(QStringLiteral("%1%2: %3")
                       .arg(summary.periodType == PeriodType::week ? QStringLiteral("Week of ")
                                                                   : QString(),
                           calendar.day(summary.startDate).toString(Qt::ISODate), summary.summary));
    sheet.head(QStringLiteral("Observations"));
    for (const auto& observation : memory.observations.observations({}, {}))
        sheet.line(QStringLiteral("%1: %2").arg(
            calendar.dateTime(observation.occurredAt).toString(QStringLiteral("yyyy-MM-dd HH:mm")),
            observation.summary));
}

} // namespace

QString MemoryExport::text(const MemoryTiers& memory, TimePoint now)
{
    using TOC = MemoryTableOfContents;
    QStringList parts { memory.notes.exportText(now) };
    const auto contents = memory.reference.tableOfContents();
    if (!contents.entries.empty())
        parts.append(QStringLiteral("Reference memory — table of contents\n")
            + contents.compactText(TOC::IncludeEmpty::yes, TOC::IncludeTimestamps::yes));
    if (memory.observations.count() > 0)
        parts.append(QStringLiteral("Observations\n") + observationLines(memory.observations));
    return parts.join(QStringLiteral("\n\n---\n\n"));
}

QByteArray MemoryExport::markdown(const MemoryTiers& memory, const Calendar& calendar)
{
    Sheet sheet;
    addNotes(sheet, memory.notes, calendar);
    addReference(sheet, memory.reference);
    addDays(sheet, memory, calendar);
    return sheet.bytes();
}

QByteArray MemoryExport::json(const MemoryTiers& memory)
{
    return pobblewig::json::text(Everything {
        .notes = memory.notes.notes(),
        .patterns = memory.notes.allPatterns(),
        .sections = memory.reference.allSections(),
        .items = memory.reference.allItems(),
        .sessions = memory.sessions.sessions(),
        .summaries = memory.summaries.all(),
        .observations = memory.observations.observations({}, {}),
    });
}

} // namespace pobblewig
