#include "MemoryDesk.h"

#include "memory/MemoryExport.h"
#include "memory/history/MemoryEraser.h"

namespace pobblewig {

MemoryDesk::MemoryDesk(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

void MemoryDesk::deleteNote(const QUuid& id)
{
    m.memory.notes.deleteNote(id, m.clock());
    m.changed();
}

void MemoryDesk::correctNote(const QUuid& id, const QString& newText)
{
    m.memory.notes.correctNote(id, newText, m.clock());
    m.changed();
}

void MemoryDesk::deleteObservation(const QUuid& id)
{
    m.memory.observations.remove(id);
    m.changed();
}

void MemoryDesk::deleteReferenceItem(const QUuid& id)
{
    m.memory.reference.deleteItem(id);
    m.changed();
}

void MemoryDesk::confirmSection(const QString& path)
{
    m.memory.reference.confirmSection(path);
    m.changed();
}

void MemoryDesk::rejectSection(const QString& path)
{
    m.memory.reference.rejectSection(path);
    m.changed();
}

std::optional<ReferenceSection> MemoryDesk::readReferenceSection(const QString& path) const
{
    return m.memory.reference.readSection(path);
}

Task<std::optional<ExpandedPeriod>> MemoryDesk::expandPeriod(QUuid id) const
{
    const auto expanded = co_await m.retrieval.expandPeriod(id);
    co_return expanded ? std::optional(*expanded) : std::nullopt;
}

QString MemoryDesk::exportMemoryText() const
{
    return MemoryExport::text(m.memory, m.clock());
}

void MemoryDesk::deleteAllMemory()
{
    m.chat.cancelStreaming();
    m.forgetting();
    MemoryEraser::emptyStores(m.memory, m.history, m.clock());
    m.proposals.dropForgets();
    if (m.directory)
        MemoryEraser::removeCopies(m.directory->path);
    m.memory.sessions.ensureActiveSession(m.clock(), m.calendar());
    m.chat.reload();
    m.changed();
}

} // namespace pobblewig
