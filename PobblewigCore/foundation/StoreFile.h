#pragma once

#include "foundation/JSONFileStore.h"
#include "foundation/Task.h"

#include <QFuture>

#include <functional>
#include <optional>

namespace pobblewig {

/// The file of a store that keeps its whole value in memory. Without a directory there is no file,
/// and the store works in memory only. So it does while the file exists but cannot be read.
class StoreFile {
public:
    /// `contents` names the kind of data in log messages, such as "observations".
    StoreFile(
        const std::optional<DataDirectory>& directory, const QString& fileName, QString contents);

    /// Returns the default value if there is no readable file.
    template <typename Value>
    Value load() const
    {
        auto value = m_file ? m_file->load<Value>() : std::nullopt;
        return value ? *std::move(value) : Value();
    }

    /// Whether there is a file that could not be read.
    bool isUnreadable() const { return m_file && m_file->isUnreadable(); }

    /// Tries again to read such a file. Returns nothing if there is none, or still no way to read
    /// it. The caller adds what the store has recorded in the meantime, and saves.
    template <typename Value>
    std::optional<Value> loadAgain() const
    {
        if (!isUnreadable())
            return std::nullopt;
        auto value = load<Value>();
        return isUnreadable() ? std::nullopt : std::optional(std::move(value));
    }

    /// Grows with every change of the value.
    int revision() const { return m_revision; }

    /// Call this after each change. A failure is logged; the next save includes the change.
    template <typename Value>
    void save(const Value& value)
    {
        ++m_revision;
        if (m_file && !m_file->isUnreadable())
            record(written(json::text(value)));
    }

    /// The same for a change that nobody waits for at the keyboard: the value is written on another
    /// thread, and the task ends once it is on disk. A save in the meantime waits for that.
    template <typename Value>
    Task<> saveBeside(Value value)
    {
        return writeBeside([value = std::move(value)] { return json::text(value); });
    }

private:
    using Outcome = tl::expected<void, FileError>;

    Outcome written(const QByteArray& text);
    Task<> writeBeside(std::function<QByteArray()> text);
    void record(const Outcome& outcome) const;

    std::optional<JSONFileStore> m_file;
    QString m_contents;
    int m_revision = 0;
    QFuture<Outcome> m_underWay;
};

} // namespace pobblewig
