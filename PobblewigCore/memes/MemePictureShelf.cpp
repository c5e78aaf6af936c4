#include "memes/MemePictureShelf.h"

#include <QDateTime>
#include <QFileInfo>
#include <QtConcurrentMap>

namespace pobblewig {

namespace {

using Picture = MemePictureShelf::Picture;
using Wish = MemePictureShelf::Wish;

struct Job {
    Wish wish;
    std::optional<Picture> picture = {};
};

/// The memory that is left for decoded frames, shared by several threads.
class Room {
public:
    bool take(qint64 bytes)
    {
        if (m_left.fetch_sub(bytes) >= bytes)
            return true;
        m_left += bytes;
        return false;
    }

private:
    std::atomic<qint64> m_left = MemePictureShelf::mostDecodedBytes;
};

/// A file as it is now, with nothing decoded.
Picture lookedAt(const QString& path)
{
    const QFileInfo info(path);
    const auto changed = info.lastModified().toMSecsSinceEpoch();
    return { .size = info.size(),
        .changedAt = TimePoint(std::chrono::milliseconds(changed)),
        .animation = tl::unexpected(MemePictureProblem::missing) };
}

bool isSame(const Picture& a, const Picture& b)
{
    return a.size == b.size && a.changedAt == b.changedAt;
}

Picture decoded(const Wish& wish, const MemePictureDecoding& decoder, Room& room)
{
    auto picture = lookedAt(wish.path);
    picture.animation = MemePictures::read(wish.path, decoder);
    if (!picture.animation)
        return picture;
    picture.isResting = wish.rests || !room.take(MemePictures::bytes(*picture.animation));
    if (picture.isResting)
        picture.animation = MemeAnimation(MemePictures::thumbnail(*picture.animation));
    return picture;
}

/// Nothing if the file must be decoded.
const Picture* unchanged(const MemePictureShelf* before, const Wish& wish)
{
    const auto* const known = before ? before->find(wish.path) : nullptr;
    const auto isLasting = known && known->animation && (known->isResting || !wish.rests);
    return isLasting && isSame(*known, lookedAt(wish.path)) ? known : nullptr;
}

} // namespace

MemePictureShelf::MemePictureShelf(std::vector<Wish> wishes, const MemePictureShelf* before,
    const MemePictureDecoding& decoder, QThreadPool& pool, MemeScanProgress& progress,
    const std::stop_token& stop)
{
    Room room;
    std::vector<Job> jobs;
    for (auto& wish : wishes) {
        const auto* const known = unchanged(before, wish);
        if (!known)
            jobs.push_back({ std::move(wish) });
        else if (known->isResting || room.take(MemePictures::bytes(*known->animation)))
            m_pictures.insert_or_assign(wish.path, *known);
    }
    progress.done = 0;
    progress.total = int(jobs.size());
    QtConcurrent::blockingMap(&pool, jobs, [&](Job& job) {
        if (!stop.stop_requested())
            job.picture = decoded(job.wish, decoder, room);
        ++progress.done;
    });
    for (auto& job : jobs) {
        if (job.picture)
            m_pictures.insert_or_assign(job.wish.path, *std::move(job.picture));
    }
}

auto MemePictureShelf::find(const QString& path) const -> const Picture*
{
    const auto found = m_pictures.find(path);
    return found == m_pictures.end() ? nullptr : &found->second;
}

} // namespace pobblewig
