#pragma once

#include "foundation/Time.h"
#include "memes/MemePictures.h"

#include <QThreadPool>

#include <atomic>
#include <map>
#include <stop_token>
#include <vector>

namespace pobblewig {

/// How far a scan is, in pictures. Read on another thread than it is written.
struct MemeScanProgress {
    std::atomic<int> done = 0;
    std::atomic<int> total = 0;
};

/// The pictures of the library, decoded as far as the memory that they may take reaches. Of each
/// one beyond, only a small still is kept: it rests.
class MemePictureShelf {
public:
    /// The memory that decoded frames may take.
    static constexpr qint64 mostDecodedBytes = 64LL * 1024 * 1024;

    struct Picture {
        qint64 size = 0;
        TimePoint changedAt;
        tl::expected<MemeAnimation, MemePictureProblem> animation;
        bool isResting = false;
    };

    struct Wish {
        QString path;
        /// Whether the picture rests however much memory is left.
        bool rests = false;
    };

    /// Decodes these pictures on the pool's threads and blocks until that is done or stopped. A
    /// file that is as it was before is not decoded again.
    MemePictureShelf(std::vector<Wish> wishes, const MemePictureShelf* before,
        const MemePictureDecoding& decoder, QThreadPool& pool, MemeScanProgress& progress,
        const std::stop_token& stop);
    MemePictureShelf() = default;

    /// Null for a picture that was not wished for.
    const Picture* find(const QString& path) const;

private:
    std::map<QString, Picture> m_pictures;
};

} // namespace pobblewig
