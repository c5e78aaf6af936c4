#pragma once

#include "features/Feature.h"
#include "memory/recall/MemoryDesk.h"
#include "memory/recall/NativeMemoryRetrieval.h"

namespace pobblewig {

/// What is remembered: read by models and by the user, published for the memory's screens. Its
/// record is a `MemorySnapshot`.
class MemoryFeature : public Feature {
public:
    /// All of it outlives the feature.
    struct Surroundings {
        const Stores& stores;
        const Moment& moment;
        std::optional<DataDirectory> directory;
        /// The lines of the current situation.
        std::function<Task<QString>()> situation;
        /// Called before and after all memory goes: nothing under way may bring it back, and nobody
        /// else may keep what quotes it.
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
