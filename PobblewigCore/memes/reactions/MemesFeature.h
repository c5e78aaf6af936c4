#pragma once

#include "features/Feature.h"
#include "features/Stores.h"
#include "foundation/Moment.h"
#include "interventions/Occupation.h"
#include "memes/reactions/MemeClassifierService.h"

namespace pobblewig {

struct MemesState {
    /// Such as "12 memes · 1 skipped".
    QString memeLibrarySummary;
    /// Why there was or was not a meme, and when.
    std::optional<QString> memeLastOutcome;
    std::optional<TimePoint> memeLastOutcomeAt;
    /// Why pictures cannot be decoded at all.
    std::optional<QString> problem;
    /// How many scans of the library have been done.
    int scans = 0;

    bool operator==(const MemesState&) const = default;
};

/// Reaction memes: keeps the library fresh, and chooses one after a reply.
class MemesFeature : public Feature {
public:
    struct Parts {
        Stores stores;
        const Moment& moment;
        ModelProviding& models;
        const std::optional<DataDirectory>& directory;
        /// The memes that come with the program.
        std::optional<QDir> bundledMemes;
        /// Null if this build decodes no pictures.
        std::shared_ptr<MemePictureDecoding> pictures;
        /// May be null.
        OccupationProviding* occupation = nullptr;
    };

    explicit MemesFeature(Parts parts);

    MemeLibrary& library() { return m_library; }

    /// Does not wait for a scan.
    Task<> tick() override;
    void publish(PublishedState& state) const override;

    /// Call this when a turn of the chat has ended.
    Task<> reactWithMemeIfAppropriate();

    /// What the mascot wears, with the whole animations. Empty unless the mascot is one for memes.
    Task<std::map<MemeMascotSlot, Meme>> wornMemes();

    /// Called when the buddy is to turn into a meme, whose animation is whole.
    std::function<void(const MemeReaction&)> onMemeReaction;

private:
    Task<std::optional<QString>> silence();
    Task<std::optional<MemeReaction>> reaction();
    Task<> show(MemeReaction reaction);

    Parts m;
    MemeLibrary m_library;
    MemeClassifierService m_classifier;
    Lifeline m_life;
};

} // namespace pobblewig
