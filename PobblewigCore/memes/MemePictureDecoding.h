#pragma once

#include "memes/MemeAnimation.h"

#include <QByteArray>

#include <tl/expected.hpp>

#include <optional>

namespace pobblewig {

/// Why a picture cannot be shown.
enum class MemePictureProblem {
    missing,
    /// No file, or one of more than 32 MiB.
    unreadable,
    notAPicture,
    /// Its sides would take too much memory.
    tooLarge,
    /// It ends too early or contradicts itself.
    broken,
    /// The module that decodes pictures is missing.
    noDecoder
};

/// Decodes GIF, PNG, APNG, JPEG and WebP.
class MemePictureDecoding {
public:
    static constexpr int mostFrames = 120;
    static constexpr int longestSide = 512;
    static constexpr qint64 mostPixels = 32LL * 1024 * 1024;
    static constexpr double standardDelay = 0.1;
    static constexpr double shortestDelay = 0.02;

    virtual ~MemePictureDecoding() = default;

    /// Makes ready to decode. Called on the main thread. Returns why pictures cannot be decoded, in
    /// words for the user, or nothing.
    virtual std::optional<QString> prepare() { return std::nullopt; }

    /// The first 120 frames, with their delays, none longer than 512 pixels on a side. If a frame
    /// fails, all fail. Called on any thread, and on several at once.
    virtual tl::expected<MemeAnimation, MemePictureProblem> decode(
        const QByteArray& bytes) const = 0;
};

} // namespace pobblewig
