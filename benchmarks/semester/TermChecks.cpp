#include "TermChecks.h"

#include "memory/ObservationStore.h"
#include "memory/librarian/RolloverLogic.h"

#include <QRegularExpression>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr size_t daysOfAWeek = 7;
constexpr size_t mostSessions = 90;

void expect(QStringList& faults, bool holds, const QString& fault)
{
    if (!holds)
        faults.append(fault);
}

std::multiset<QString> expectedDayKeys(const Term& days)
{
    std::multiset<QString> keys;
    for (const auto& day : days) {
        for (int session = 0; session < day.sessions; ++session)
            keys.insert(day.date.toString(Qt::ISODate));
    }
    return keys;
}

std::multiset<QString> dayKeys(const TermRecord& record)
{
    std::multiset<QString> keys;
    for (const auto& [id, key] : record.dayKeys)
        keys.insert(key);
    return keys;
}

template <typename Record>
std::multiset<QUuid> ids(const std::vector<Record>& records)
{
    std::multiset<QUuid> ids;
    for (const auto& record : records)
        ids.insert(record.id);
    return ids;
}

void checkSessionFile(QStringList& faults, const TermFiles& files)
{
    const auto summaries = ids(files.periods);
    expect(faults, files.sessions.size() <= mostSessions, QStringLiteral("too many sessions"));
    for (const auto& session : files.sessions) {
        const auto isActive = session.id == files.sessions.front().id;
        expect(faults, session.endedAt.has_value() != isActive,
            session.dayKey + QStringLiteral(": ended and is active, or neither"));
        expect(faults, isActive || summaries.count(session.dailySummaryID.value_or(QUuid())) == 1,
            session.dayKey + QStringLiteral(": its session names no summary"));
    }
}

} // namespace

QStringList TermChecks::sessions(const TermFiles& files, const TermRecord& record, const Term& days)
{
    auto faults = record.faults;
    expect(faults, dayKeys(record) == expectedDayKeys(days),
        QStringLiteral("the days that began are not those on which the program was open"));
    const auto dailies = ids(files.summaries(PeriodType::day));
    for (const auto& [id, key] : record.dayKeys) {
        const auto isActive = !files.sessions.empty() && id == files.sessions.front().id;
        const auto summaries = dailies.count(dailySummaryID(id));
        expect(faults, summaries == (isActive ? 0 : 1),
            QStringLiteral("%1 has %2 summaries").arg(key).arg(summaries));
    }
    expect(faults, dailies.size() + 1 == record.dayKeys.size(),
        QStringLiteral("%1 days were closed of %2").arg(dailies.size()).arg(record.dayKeys.size()));
    checkSessionFile(faults, files);
    return faults;
}

QStringList TermChecks::times(const TermFiles& files)
{
    QStringList faults;
    std::map<QUuid, PeriodSummary> days;
    TimePoint end {};
    for (const auto& day : files.summaries(PeriodType::day)) {
        expect(faults, end <= day.startDate && day.startDate <= day.endDate,
            QStringLiteral("a day begins before the end of another, or ends before it begins"));
        end = day.endDate;
        days[day.id] = day;
    }
    for (const auto& observation : files.observations) {
        const auto day = days.find(observation.archivedIntoPeriodID.value_or(QUuid()));
        expect(faults,
            day == days.end()
                || (day->second.startDate <= observation.occurredAt
                    && observation.occurredAt <= day->second.endDate),
            QStringLiteral("an observation lies in another day"));
    }
    return faults;
}

QStringList TermChecks::weeks(const TermFiles& files)
{
    QStringList faults;
    auto dailies = files.summaries(PeriodType::day);
    std::ranges::stable_sort(dailies, {}, &PeriodSummary::startDate);
    const auto weeks = files.summaries(PeriodType::week);
    expect(faults, weeks.size() == dailies.size() / daysOfAWeek,
        QStringLiteral("%1 weeks of %2 days").arg(weeks.size()).arg(dailies.size()));
    size_t next = 0;
    for (const auto& week : weeks) {
        expect(faults, week.sourceDailySummaryIDs.size() == daysOfAWeek,
            QStringLiteral("a week of %1 days").arg(week.sourceDailySummaryIDs.size()));
        for (const auto& id : week.sourceDailySummaryIDs) {
            expect(faults, next < dailies.size() && dailies[next].id == id,
                QStringLiteral("a week holds another day than day %1").arg(next + 1));
            ++next;
        }
    }
    return faults;
}

QStringList TermChecks::messages(const TermFiles& files, const TermRecord& record)
{
    QStringList faults;
    std::map<QUuid, int> places;
    for (const auto& message : files.history)
        ++places[message.id];
    for (const auto& [name, messages] : files.archives) {
        for (const auto& message : messages)
            ++places[message.id];
    }
    for (const auto& id : record.said) {
        const auto node = places.extract(id);
        const auto found = node ? node.mapped() : 0;
        expect(faults, found == 1, QStringLiteral("a message stands in %1 places").arg(found));
    }
    expect(faults, places.empty(), QStringLiteral("there are messages that nobody has heard"));
    expect(faults, !record.said.empty(), QStringLiteral("nothing was said"));
    return faults;
}

QStringList TermChecks::contents(const TermFiles& files)
{
    QStringList faults;
    for (const auto& name : files.unreadable)
        faults.append(name + QStringLiteral(" cannot be read"));
    static const QRegularExpression known(QStringLiteral(
        R"(^((activity|canvas|chat|interventions|memory|observations|proposals|reference|rules|sessions|settings|summaries|transcript|usage|usage_days))"
        R"(|chat-\d{4}-\d\d-\d\d-[0-9A-F]{8})\.json$|^memes$)"));
    for (const auto& name :
        files.directory.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        expect(faults, known.match(name).hasMatch(), name + QStringLiteral(" is not a store"));

    const auto dailies = files.summaries(PeriodType::day);
    expect(faults, !dailies.empty(), QStringLiteral("no day was closed"));
    if (dailies.empty())
        return faults;
    const auto lastEnd = dailies.back().endDate;
    const auto oldest = lastEnd - std::chrono::days(ObservationStore::archivedRetentionDays);
    const auto summaries = ids(dailies);
    for (const auto& observation : files.observations) {
        const auto& period = observation.archivedIntoPeriodID;
        expect(faults, period.has_value() == (observation.occurredAt <= lastEnd),
            QStringLiteral("an observation is archived too early or not at all"));
        expect(faults, !period || summaries.contains(*period),
            QStringLiteral("an observation is archived into nothing"));
        expect(faults, observation.occurredAt >= oldest,
            QStringLiteral("an observation has outlived its time"));
    }
    return faults;
}

QStringList TermChecks::memoryOff(const TermFiles& files, const TermRecord& record)
{
    QStringList faults;
    expect(faults, record.librarianCallsWhileOff.size() == 1,
        QStringLiteral("the librarian was asked while the memory was off, or it never was"));
    int archivesWithTheWord = 0;
    for (const auto& name : files.directory.entryList({ QStringLiteral("*.json") })) {
        QFile file(files.directory.filePath(name));
        const auto holdsTheWord =
            file.open(QIODevice::ReadOnly) && file.readAll().contains(unmemorableWord().toUtf8());
        if (name.startsWith(u"chat-"))
            archivesWithTheWord += holdsTheWord;
        else
            expect(faults, !holdsTheWord, name + QStringLiteral(" holds what was not to be kept"));
    }
    expect(faults, !files.memory.notes.empty(), QStringLiteral("nothing was ever kept"));
    expect(faults, archivesWithTheWord > 0, QStringLiteral("the word was never said"));
    return faults;
}

QStringList TermChecks::crashes(const TermRecord& record)
{
    QStringList faults;
    for (const auto* file :
        { u"%1 summaries.json 1", u"%1 observations.json 1", u"%1 sessions.json 1", u"%1 archive 1",
            u"%1 chat.json 1", u"%1 sessions.json 2", u"week %1 summaries.json 1" }) {
        for (const auto* call : { u"create", u"rename" }) {
            const auto step = QStringView(file).toString().arg(QStringView(call));
            expect(faults, record.killed.contains(step), step + QStringLiteral(" was survived"));
        }
    }
    expect(faults, record.survived, QStringLiteral("there are steps that were never the last"));
    return faults;
}

} // namespace pobblewig
