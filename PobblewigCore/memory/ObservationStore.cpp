#include "memory/ObservationStore.h"

#include "foundation/Text.h"

#include <QStringList>

#include <algorithm>
#include <set>
#include <span>

namespace pobblewig {

namespace {

using TagSet = std::set<QString>;

TagSet lowered(const std::vector<QString>& tags)
{
    TagSet result;
    for (const auto& tag : tags)
        result.insert(tag.toLower());
    return result;
}

bool isWithin(
    const DatedObservation& observation, std::optional<TimePoint> from, std::optional<TimePoint> to)
{
    return (!from || observation.occurredAt >= *from) && (!to || observation.occurredAt <= *to);
}

bool hasAnyOf(const DatedObservation& observation, const TagSet& tags)
{
    return tags.empty() || std::ranges::any_of(observation.tags, [&](const auto& tag) {
        return tags.contains(tag.toLower());
    });
}

QString searchableText(const DatedObservation& observation)
{
    QStringList parts(observation.summary);
    for (const auto& fact : observation.observedFacts)
        parts.append(fact);
    if (observation.inference)
        parts.append(*observation.inference);
    if (observation.uncertainty)
        parts.append(*observation.uncertainty);
    for (const auto& tag : observation.tags)
        parts.append(tag);
    return parts.join(u' ');
}

void limit(QString& text)
{
    text = Text::firstCharacters(Text::onOneLine(text), ObservationStore::longestText);
}

void limit(std::vector<QString>& texts)
{
    if (texts.size() > ObservationStore::mostTexts)
        texts.resize(ObservationStore::mostTexts);
    for (auto& text : texts)
        limit(text);
}

DatedObservation limited(DatedObservation observation)
{
    limit(observation.summary);
    limit(observation.observedFacts);
    limit(observation.tags);
    for (auto* text : { &observation.inference, &observation.uncertainty }) {
        if (*text)
            limit(**text);
    }
    return observation;
}

std::vector<DatedObservation> oldestFirst(std::vector<DatedObservation> observations)
{
    std::ranges::stable_sort(observations, {}, &DatedObservation::occurredAt);
    return observations;
}

/// Both point into one list. At the same instant, the one earlier in the list comes first.
bool comesFirst(const DatedObservation* a, const DatedObservation* b)
{
    return a->occurredAt == b->occurredAt ? a < b : a->occurredAt > b->occurredAt;
}

std::vector<DatedObservation> newestFirst(std::vector<const DatedObservation*> found, int limit)
{
    const auto count = std::min(found.size(), size_t(std::max(limit, 1)));
    std::ranges::partial_sort(found, found.begin() + std::ptrdiff_t(count), comesFirst);
    std::vector<DatedObservation> newest;
    newest.reserve(count);
    for (const auto* observation : std::span(found).first(count))
        newest.push_back(*observation);
    return newest;
}

} // namespace

ObservationStore::ObservationStore(const std::optional<DataDirectory>& directory)
    : m_file(directory, QStringLiteral("observations.json"), QStringLiteral("observations"))
    , m_observations(m_file.load<std::vector<DatedObservation>>())
{
}

std::vector<DatedObservation> ObservationStore::observations(
    std::optional<TimePoint> from, std::optional<TimePoint> to) const
{
    std::vector<DatedObservation> found;
    std::ranges::copy_if(m_observations, std::back_inserter(found),
        [&](const auto& observation) { return isWithin(observation, from, to); });
    return oldestFirst(std::move(found));
}

std::vector<DatedObservation> ObservationStore::withIDs(const std::vector<QUuid>& ids) const
{
    const std::set<QUuid> wanted(ids.begin(), ids.end());
    std::vector<DatedObservation> found;
    std::ranges::copy_if(m_observations, std::back_inserter(found),
        [&](const auto& observation) { return wanted.contains(observation.id); });
    return oldestFirst(std::move(found));
}

std::vector<DatedObservation> ObservationStore::search(const Query& query) const
{
    const auto tokens = SearchTexts::tokens(query.text);
    const auto tags = lowered(query.tags);
    std::vector<const DatedObservation*> found;
    for (size_t index = 0; index < m_observations.size(); ++index) {
        const auto& observation = m_observations[index];
        const auto text = [&] { return searchableText(observation); };
        if (isWithin(observation, query.from, query.to) && hasAnyOf(observation, tags)
            && m_searchTexts.match(index, tokens, text))
            found.push_back(&observation);
    }
    return newestFirst(std::move(found), query.limit);
}

DatedObservation ObservationStore::add(DatedObservation observation)
{
    m_observations.push_back(limited(std::move(observation)));
    m_file.save(m_observations);
    return m_observations.back();
}

Task<> ObservationStore::addAll(std::vector<DatedObservation> observations)
{
    std::ranges::transform(observations, std::back_inserter(m_observations), limited);
    return m_file.saveBeside(m_observations);
}

void ObservationStore::remove(const QUuid& id)
{
    remove(std::vector { id });
}

void ObservationStore::remove(const std::vector<QUuid>& ids)
{
    const std::set<QUuid> unwanted(ids.begin(), ids.end());
    removeIf([&](const auto& observation) { return unwanted.contains(observation.id); });
}

void ObservationStore::markArchived(const std::vector<QUuid>& ids, const QUuid& into)
{
    const std::set<QUuid> archived(ids.begin(), ids.end());
    bool isChanged = false;
    for (auto& observation : m_observations) {
        if (!archived.contains(observation.id))
            continue;
        observation.archivedIntoPeriodID = into;
        isChanged = true;
    }
    if (isChanged)
        m_file.save(m_observations);
}

int ObservationStore::pruneArchived(int olderThan, TimePoint now)
{
    const auto oldest = now - std::chrono::days(olderThan);
    return removeIf([&](const auto& observation) {
        return observation.archivedIntoPeriodID && observation.occurredAt < oldest;
    });
}

void ObservationStore::deleteAll()
{
    m_observations.clear();
    m_searchTexts.forgetAll();
    m_file.save(m_observations);
}

void ObservationStore::readAgain()
{
    auto kept = m_file.loadAgain<std::vector<DatedObservation>>();
    if (!kept)
        return;
    std::ranges::move(m_observations, std::back_inserter(*kept));
    m_observations = *std::move(kept);
    m_searchTexts.forgetAll();
    m_file.save(m_observations);
}

int ObservationStore::removeIf(const std::function<bool(const DatedObservation&)>& isUnwanted)
{
    const auto count = std::erase_if(m_observations, isUnwanted);
    if (count == 0)
        return 0;
    m_searchTexts.forgetAll();
    m_file.save(m_observations);
    return int(count);
}

} // namespace pobblewig
