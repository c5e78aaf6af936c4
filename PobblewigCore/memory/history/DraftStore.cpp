#include "memory/history/DraftStore.h"

#include "foundation/Log.h"

namespace pobblewig {

DraftStore::DraftStore(const std::optional<DataDirectory>& directory)
{
    if (!directory)
        return;
    m_file.emplace(*directory, QStringLiteral("draft.json"));
    m_draft = m_file->load<Draft>().value_or(Draft());
}

void DraftStore::setText(const QString& text)
{
    const auto kept = text.trimmed().isEmpty() ? QString() : text;
    if (m_draft.text == kept)
        return;
    m_draft.text = kept;
    if (!m_file)
        return;
    if (kept.isEmpty()) {
        m_file->remove();
        return;
    }
    if (const auto saved = m_file->save(m_draft); !saved)
        Log::line(
            QStringLiteral("buddy: failed to persist draft: %1").arg(saved.error().description()));
}

} // namespace pobblewig
