#pragma once

#include <QString>

#include <optional>
#include <span>

namespace pobblewig {

/// What a meme can express. The names of the cases are the tags in manifests and in a model's
/// answer.
enum class MemeEmotion {
    amused,
    celebrating,
    frustrated,
    confused,
    skeptical,
    offended,
    shocked,
    /// The user is down.
    sympathetic,
    /// The buddy is down.
    sad,
    smug,
    devoted
};

/// A place that a meme can take for good. The names of the cases are tags in manifests, beside
/// those of the emotions; the first is written "default".
enum class MemeMascotSlot { byDefault, sleeping };

namespace MemeTags {

std::span<const MemeEmotion> emotions();
std::span<const MemeMascotSlot> mascotSlots();

QString rawValue(MemeEmotion emotion);
QString rawValue(MemeMascotSlot slot);

/// Tags match exactly.
std::optional<MemeEmotion> emotion(const QString& tag);
std::optional<MemeMascotSlot> slot(const QString& tag);

QString displayName(MemeEmotion emotion);
QString displayName(MemeMascotSlot slot);

/// When the emotion fits, for a model and for the user.
QString classifierDescription(MemeEmotion emotion);

/// "- amused: something genuinely funny…", a line for each emotion.
QString emotionLines();

} // namespace MemeTags

} // namespace pobblewig
