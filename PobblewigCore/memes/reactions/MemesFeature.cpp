#include "memes/reactions/MemesFeature.h"

#include "memes/reactions/MemeSilence.h"
#include "memory/history/ChatHistoryStore.h"
#include "settings/SettingsStore.h"

#include <QRandomGenerator>

namespace pobblewig {

namespace {

class NoPictures final : public MemePictureDecoding {
public:
    tl::expected<MemeAnimation, MemePictureProblem> decode(const QByteArray&) const override
    {
        return tl::unexpected(MemePictureProblem::noDecoder);
    }
};

std::optional<DataDirectory> memesIn(const std::optional<DataDirectory>& directory)
{
    auto memes = directory;
    if (memes)
        memes->path = QDir(memes->path.filePath(QStringLiteral("memes")));
    return memes;
}

std::shared_ptr<MemePictureDecoding> decoder(std::shared_ptr<MemePictureDecoding> given)
{
    return given ? std::move(given) : std::make_shared<NoPictures>();
}

/// The newest reply with the user's message before it.
std::optional<std::pair<ChatMessage, ChatMessage>> exchange(
    const std::vector<ChatMessage>& messages)
{
    using Role = ChatMessage::Role;
    if (messages.empty() || messages.back().role != Role::assistant)
        return std::nullopt;
    const auto user =
        std::ranges::find(messages.rbegin(), messages.rend(), Role::user, &ChatMessage::role);
    if (user == messages.rend())
        return std::nullopt;
    return std::pair(*user, messages.back());
}

} // namespace

MemesFeature::MemesFeature(Parts parts)
    : m(std::move(parts))
    , m_library(memesIn(m.directory), m.bundledMemes, decoder(m.pictures))
    , m_classifier({ .library = m_library,
          .usage = m.stores.usage,
          .models = m.models,
          .isEnabled = [this] { return m.stores.settings.settings().memeModeEnabled; },
          .persona = [this] { return m.stores.settings.settings().companionPersona; },
          .random = [] { return QRandomGenerator::global()->generateDouble(); } })
{
    m_library.onScanned = [this] { changed(); };
}

Task<> MemesFeature::tick()
{
    // The first scan of a large library takes seconds.
    spawn(m_library.reloadIfChanged());
    co_return;
}

void MemesFeature::publish(PublishedState& state) const
{
    state.set(MemesState { .memeLibrarySummary = m_library.summaryLine(),
        .memeLastOutcome = m_classifier.lastOutcome(),
        .memeLastOutcomeAt = m_classifier.lastOutcomeAt(),
        .problem = m_library.problem(),
        .scans = m_library.scanCount() });
}

Task<> MemesFeature::reactWithMemeIfAppropriate()
{
    const auto life = m_life.watch();
    const auto chosen = co_await reaction();
    if (life.expired())
        co_return;
    if (chosen)
        co_await show(*chosen);
    if (!life.expired())
        changed();
}

Task<> MemesFeature::show(MemeReaction reaction)
{
    const auto life = m_life.watch();
    reaction.meme.animation = co_await m_library.animation(reaction.meme);
    if (life.expired())
        co_return;
    // A film may have begun while the model was thinking.
    if (const auto reason = co_await silence())
        m_classifier.recordOutcome(QStringLiteral("not shown: %1").arg(*reason), m.moment.now());
    else if (onMemeReaction)
        onMemeReaction(reaction);
}

Task<std::map<MemeMascotSlot, Meme>> MemesFeature::wornMemes()
{
    std::map<MemeMascotSlot, Meme> worn;
    if (m.stores.settings.settings().mascot == u"meme")
        worn = m_library.mascotMemes();
    const auto life = m_life.watch();
    for (auto& [slot, meme] : worn) {
        if (!life.expired())
            meme.animation = co_await m_library.animation(meme);
    }
    co_return worn;
}

Task<std::optional<QString>> MemesFeature::silence()
{
    auto occupation = Occupation::none;
    if (m.occupation)
        occupation = co_await m.occupation->occupation();
    co_return memeSilence(m.stores.settings.settings().mode, occupation);
}

Task<std::optional<MemeReaction>> MemesFeature::reaction()
{
    const auto turn = exchange(m.stores.history.messages());
    if (!turn)
        co_return std::nullopt;
    const auto reason = co_await silence();
    if (reason && m.stores.settings.settings().memeModeEnabled) {
        m_classifier.recordOutcome(QStringLiteral("not now: %1").arg(*reason), m.moment.now());
        co_return std::nullopt;
    }
    co_return co_await m_classifier.reactToExchange(turn->first, turn->second, m.moment.now());
}

} // namespace pobblewig
