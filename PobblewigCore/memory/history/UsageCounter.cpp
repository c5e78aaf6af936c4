#include "memory/history/UsageCounter.h"

#include <algorithm>

namespace pobblewig {

UsageCounter::UsageCounter(
    const std::optional<DataDirectory>& directory, std::function<QDate()> today)
    : m_today(std::move(today))
{
    if (!directory)
        return;
    m_file.emplace(*directory, QStringLiteral("usage.json"));
    m_snapshot = m_file->load<Snapshot>().value_or(Snapshot());
    m_daysFile.emplace(*directory, QStringLiteral("usage_days.json"));
    m_days = m_daysFile->load<std::vector<Day>>().value_or(std::vector<Day>());
}

void UsageCounter::addMainUsage(int prompt, int completion)
{
    add([=](Snapshot& to) {
        to.mainPromptTokens += prompt;
        to.mainCompletionTokens += completion;
        ++to.chatCalls;
    });
}

void UsageCounter::addLibrarianUsage(int prompt, int completion)
{
    add([=](Snapshot& to) {
        to.librarianPromptTokens += prompt;
        to.librarianCompletionTokens += completion;
        ++to.librarianCalls;
    });
}

void UsageCounter::addVisionUsage(int prompt, int completion)
{
    add([=](Snapshot& to) {
        to.visionPromptTokens += prompt;
        to.visionCompletionTokens += completion;
        ++to.visionCalls;
    });
}

void UsageCounter::addIntervention()
{
    add([](Snapshot& to) { ++to.interventions; });
}

void UsageCounter::readAgain()
{
    if (m_file && m_file->isUnreadable())
        m_snapshot = m_file->load<Snapshot>().value_or(m_snapshot);
    if (m_daysFile && m_daysFile->isUnreadable())
        m_days = m_daysFile->load<std::vector<Day>>().value_or(m_days);
}

void UsageCounter::add(const std::function<void(Snapshot&)>& use)
{
    use(m_snapshot);
    if (m_today)
        use(thisDay().usage);
    save();
}

UsageCounter::Day& UsageCounter::thisDay()
{
    const auto today = m_today().toString(Qt::ISODate);
    const auto known = std::ranges::find(m_days, today, &Day::day);
    if (known != m_days.end())
        return *known;
    if (m_days.size() >= mostDays)
        m_days.erase(m_days.begin(), m_days.end() - std::ptrdiff_t(mostDays) + 1);
    // Not the last one if the clock was set back.
    const auto place = std::ranges::lower_bound(m_days, today, {}, &Day::day);
    return *m_days.insert(place, { .day = today });
}

void UsageCounter::save() const
{
    // Totals are a convenience: the next write makes up for a failed one.
    if (m_file)
        (void)m_file->save(m_snapshot);
    if (m_daysFile && m_today)
        (void)m_daysFile->save(m_days);
}

} // namespace pobblewig
