#include "memory/recall/MemoryDesk.h"

#include "memory/MemoryExport.h"
#include "memory/history/ChatHistoryStore.h"
#include "memory/history/MemoryEraser.h"

namespace pobblewig {

MemoryDesk::MemoryDesk(Dependencies dependencies)
    : m(std::move(dependencies))
    , m_memory(m.stores.memory)
{
}

void MemoryDesk::deleteNote(const QUuid& id)
{
    m.deleting();
    m_memory.notes.deleteNote(id, m.moment.now());
    m.changed();
}

void MemoryDesk::correctNote(const QUuid& id, const QString& newText)
{
    m_memory.notes.correctNote(id, newText, m.moment.now());
    m.changed();
}

void MemoryDesk::reviveNote(const QUuid& id)
{
    m_memory.notes.revive(id, m.moment.now());
    m.changed();
}

void MemoryDesk::deleteObservation(const QUuid& id)
{
    m.deleting();
    m_memory.observations.remove(id);
    m.changed();
}

void MemoryDesk::deleteReferenceItem(const QUuid& id)
{
    m.deleting();
    m_memory.reference.deleteItem(id);
    m.changed();
}

void MemoryDesk::putBack(const MemoryNote& note)
{
    m_memory.notes.putBack(note, m.moment.now());
    m.changed();
}

void MemoryDesk::putBack(const PatternNote& pattern)
{
    m_memory.notes.putBack(pattern, m.moment.now());
    m.changed();
}

void MemoryDesk::putBack(const DatedObservation& observation)
{
    if (!m_memory.observations.withIDs({ observation.id }).empty())
        return;
    m_memory.observations.add(observation);
    m.changed();
}

void MemoryDesk::putBack(const ReferenceItem& item)
{
    m_memory.reference.upsertItem(item);
    m.changed();
}

void MemoryDesk::putBack(const ReferenceSectionMeta& section)
{
    m_memory.reference.proposeSection(section.path, section.title, section.summary);
    m.changed();
}

void MemoryDesk::confirmSection(const QString& path)
{
    m_memory.reference.confirmSection(path);
    m.changed();
}

void MemoryDesk::rejectSection(const QString& path)
{
    m_memory.reference.rejectSection(path);
    m.changed();
}

std::optional<ReferenceSection> MemoryDesk::readReferenceSection(const QString& path) const
{
    return m_memory.reference.readSection(path);
}

Task<std::optional<ExpandedPeriod>> MemoryDesk::expandPeriod(QUuid id) const
{
    const auto expanded = co_await m.retrieval.expandPeriod(id);
    co_return expanded ? std::optional(*expanded) : std::nullopt;
}

QString MemoryDesk::exportMemoryText() const
{
    return MemoryExport::text(m_memory, m.moment.now());
}

QByteArray MemoryDesk::exportMarkdown() const
{
    return MemoryExport::markdown(m_memory, m.moment.calendar());
}

QByteArray MemoryDesk::exportJSON() const
{
    return MemoryExport::json(m_memory);
}

void MemoryDesk::deleteAllMemory()
{
    m.forgetting();
    if (m.directory)
        MemoryEraser::removeUnreadable(*m.directory);
    MemoryEraser::emptyStores(m_memory, m.stores.history, m.moment.now());
    if (m.directory)
        MemoryEraser::removeCopies(m.directory->path);
    m_memory.sessions.ensureActiveSession(m.moment.now(), m.moment.calendar());
    m.forgotten();
    m.changed();
}

} // namespace pobblewig
