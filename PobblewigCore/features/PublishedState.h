#pragma once

#include <any>
#include <typeindex>
#include <unordered_map>
#include <utility>

namespace pobblewig {

/// What the user interface reads: one record of state for each feature, each of its own type.
class PublishedState {
public:
    /// The record as last published, or one with its defaults.
    template <typename Record>
    const Record& of() const
    {
        static const Record unpublished {};
        const auto entry = m_records.find(typeid(Record));
        return entry == m_records.end() ? unpublished : std::any_cast<const Record&>(entry->second);
    }

    /// Counts as a change unless the record equals the previous one.
    template <typename Record>
    void set(Record record)
    {
        if (record == of<Record>())
            return;
        m_records.insert_or_assign(typeid(Record), std::move(record));
        ++m_revision;
    }

    /// Grows with every change.
    int revision() const { return m_revision; }

private:
    std::unordered_map<std::type_index, std::any> m_records;
    int m_revision = 0;
};

} // namespace pobblewig
