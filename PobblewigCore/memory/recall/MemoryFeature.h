#pragma once

#include "features/Feature.h"
#include "memory/recall/MemoryDesk.h"
#include "memory/recall/NativeMemoryRetrieval.h"

namespace pobblewig {

/// The memory, read by models and by the user. Publishes a `MemorySnapshot` for the memory screens.
class MemoryFeature : public Feature {
public:
    /// Everything here must outlive the feature.
    struct Surroundings {
        const Stores& stores;
        const Moment& moment;
        std::optional<DataDirectory> directory;
        /// The lines of the current situation.
        std::function<QString()> situation;
        /// Called before an entry is deleted, so that nothing in progress restores it.
        std::function<void()> deleting;
        /// Called before and after all memory is deleted, so that nothing in progress restores it
        /// and every quotation of it elsewhere is dropped.
        std::function<void()> forgetting;
        std::function<void()> forgotten;
    };

    explicit MemoryFeature(Surroundings surroundings);

    MemoryDesk& desk() { return m_desk; }

    Task<> tick() override;
    std::vector<QString> situation(TimePoint now) const override;
    std::vector<Tool> tools() override;
    void publish(PublishedState& state) const override;
    int revision() const override { return m_memory.revision(); }

private:
    Surroundings m;
    MemoryTiers& m_memory;
    NativeMemoryRetrieval m_retrieval;
    MemoryDesk m_desk;
};

} // namespace pobblewig
