#pragma once

#include "memes/MemePictureDecoding.h"

#include <memory>

/// The files of pictures. Works on any thread.
namespace pobblewig::MemePictures {

using Decoder = std::shared_ptr<const MemePictureDecoding>;

/// Larger files are not read.
inline constexpr qint64 mostBytes = 32LL * 1024 * 1024;

enum class Format { gif, png, apng, jpeg, webp };

/// Judged by the first bytes. An APNG is told from a PNG only if they reach to its pixels.
std::optional<Format> format(QByteArrayView bytes);

/// Whether the file begins like a picture. Nothing but a regular file is opened.
bool isPicture(const QString& path);

tl::expected<MemeAnimation, MemePictureProblem> read(
    const QString& path, const MemePictureDecoding& decoder);

/// A small still of the first frame.
QImage thumbnail(const MemeAnimation& animation);

/// The memory that the frames take.
qint64 bytes(const MemeAnimation& animation);

/// The problem in words for the user.
QString inWords(MemePictureProblem problem);

} // namespace pobblewig::MemePictures
