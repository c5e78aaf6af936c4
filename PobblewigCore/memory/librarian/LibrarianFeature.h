#pragma once

#include "features/Feature.h"
#include "memory/librarian/ReadingAlong.h"
#include "memory/librarian/SessionRolloverService.h"

namespace pobblewig {

/// The second model, which reads along, and what it makes of a session that ends.
class LibrarianFeature : public Feature {
public:
    /// All of it outlives the feature.
    struct Surroundings {
        const Stores& stores;
        const Moment& moment;
        ModelProviding& models;
        std::optional<DataDirectory> directory;
        /// The lines of the current situation.
        std::function<Task<QString>()> situation;
        /// What the user did on the computer, in words.
        std::function<QString(TimePoint from, TimePoint to)> activitySummary;
    };

    explicit LibrarianFeature(Surroundings surroundings);

    LibrarianService& service() { return m_service; }
    const LibrarianService& service() const { return m_service; }
    SessionRolloverService& rollover() { return m_rollover; }
    ReadingAlong& readingAlong() { return m_readingAlong; }

    /// Finishes what a crash has cut off, and opens a session.
    void start() override;

private:
    const Moment& m_moment;
    MemoryTiers& m_memory;
    LibrarianService m_service;
    SessionRolloverService m_rollover;
    ReadingAlong m_readingAlong;
};

} // namespace pobblewig
