#include "memory/history/UsageCounter.h"

namespace pobblewig {

UsageCounter::UsageCounter(const std::optional<DataDirectory>& directory)
{
    if (!directory)
        return;
    m_file.emplace(*directory, QStringLiteral("usage.json"));
    m_snapshot = m_file->load<Snapshot>().value_or(Snapshot());
}

void UsageCounter::addMainUsage(int prompt, int completion)
{
    m_snapshot.mainPromptTokens += prompt;
    m_snapshot.mainCompletionTokens += completion;
    ++m_snapshot.chatCalls;
    save();
}

void UsageCounter::addLibrarianUsage(int prompt, int completion)
{
    m_snapshot.librarianPromptTokens += prompt;
    m_snapshot.librarianCompletionTokens += completion;
    ++m_snapshot.librarianCalls;
    save();
}

void UsageCounter::addVisionUsage(int prompt, int completion)
{
    m_snapshot.visionPromptTokens += prompt;
    m_snapshot.visionCompletionTokens += completion;
    ++m_snapshot.visionCalls;
    save();
}

void UsageCounter::addIntervention()
{
    ++m_snapshot.interventions;
    save();
}

void UsageCounter::readAgain()
{
    if (m_file && m_file->isUnreadable())
        m_snapshot = m_file->load<Snapshot>().value_or(m_snapshot);
}

void UsageCounter::save() const
{
    // Totals are a convenience: the next write makes up for a failed one.
    if (m_file)
        (void)m_file->save(m_snapshot);
}

} // namespace pobblewig
