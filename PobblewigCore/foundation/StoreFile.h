#pragma once

#include "foundation/JSONFileStore.h"
#include "foundation/Log.h"

#include <optional>

namespace pobblewig {

/// The file of a store that keeps its whole value in memory. Without a directory there is no file,
/// and the store works in memory only.
class StoreFile {
public:
    /// `contents` names the kind of data in log messages, such as "observations".
    StoreFile(
        const std::optional<DataDirectory>& directory, const QString& fileName, QString contents)
        : m_contents(std::move(contents))
    {
        if (directory)
            m_file.emplace(*directory, fileName);
    }

    /// Returns the default value if there is no readable file.
    template <typename Value>
    Value load() const
    {
        auto value = m_file ? m_file->load<Value>() : std::nullopt;
        return value ? *std::move(value) : Value();
    }

    /// Grows with every change of the value.
    int revision() const { return m_revision; }

    /// Call this after each change. A failure is logged; the next save includes the change.
    template <typename Value>
    void save(const Value& value)
    {
        ++m_revision;
        if (!m_file)
            return;
        if (const auto saved = m_file->save(value); !saved)
            Log::line(QStringLiteral("buddy: failed to persist %1: %2")
                          .arg(m_contents, saved.error().description()));
    }

private:
    std::optional<JSONFileStore> m_file;
    QString m_contents;
    int m_revision = 0;
};

} // namespace pobblewig
