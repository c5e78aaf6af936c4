#pragma once

#include "features/Feature.h"
#include "memory/librarian/ReadingAlong.h"
#include "memory/librarian/SessionRolloverService.h"

namespace pobblewig {

struct LibrarianState {
    /// Why the librarian's latest run failed, or nothing since a run that went well.
    std::optional<QString> lastError;

    bool operator==(const LibrarianState&) const = default;
};

/// The second model, which reads the conversations, and the rollover of ended sessions.
class LibrarianFeature : public Feature {
public:
    /// Everything here must outlive the feature.
    struct Surroundings {
        const Stores& stores;
        const Moment& moment;
        ModelProviding& models;
        std::optional<DataDirectory> directory;
        /// The lines of the current situation.
        std::function<QString()> situation;
        /// Describes what the user did on the computer.
        std::function<QString(TimePoint from, TimePoint to)> activitySummary;
    };

    explicit LibrarianFeature(Surroundings surroundings);

    LibrarianService& service() { return m_service; }
    const LibrarianService& service() const { return m_service; }
    SessionRolloverService& rollover() { return m_rollover; }
    ReadingAlong& readingAlong() { return m_readingAlong; }

    /// Finishes a rollover that a crash interrupted, and opens a session.
    void start() override;
    void publish(PublishedState& state) const override;
    int revision() const override { return m_service.revision(); }

private:
    const Moment& m_moment;
    MemoryTiers& m_memory;
    LibrarianService m_service;
    SessionRolloverService m_rollover;
    ReadingAlong m_readingAlong;
};

} // namespace pobblewig
