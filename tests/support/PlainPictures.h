#pragma once

#include "memes/MemeManifest.h"
#include "memes/MemePictureDecoding.h"

#include <QDir>

#include <atomic>

namespace pobblewig {

/// Decodes still pictures only, and counts them.
struct PlainPictures : MemePictureDecoding {
    mutable std::atomic<int> decoded = 0;

    tl::expected<MemeAnimation, MemePictureProblem> decode(const QByteArray& bytes) const override
    {
        ++decoded;
        const auto picture = QImage::fromData(bytes);
        if (picture.isNull())
            return tl::unexpected(MemePictureProblem::broken);
        return MemeAnimation(picture);
    }
};

/// Writes a picture of that width.
inline void putPicture(const QDir& directory, const QString& file, int width = 4, int height = 4)
{
    directory.mkpath(QStringLiteral("."));
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::red);
    picture.save(directory.filePath(file), "PNG");
}

/// Replaces the folder's manifest.
inline void putManifestText(const QDir& directory, const QByteArray& text)
{
    directory.mkpath(QStringLiteral("."));
    QFile file(directory.filePath(QStringLiteral("memes.json")));
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
}

inline void putManifest(const QDir& directory, const std::vector<MemeManifestEntry>& entries)
{
    putManifestText(directory, json::text(MemeManifest { entries }));
}

} // namespace pobblewig
