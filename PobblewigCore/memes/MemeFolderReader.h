#pragma once

#include "memes/Meme.h"
#include "memes/MemeFolders.h"
#include "memes/MemePictureDecoding.h"

namespace pobblewig {

/// Why an entry gives no meme, or a folder none of its entries.
struct MemeProblem {
    /// Empty for what comes with the program.
    QString folderID;
    /// Empty if the whole manifest cannot be read.
    QString file;
    /// The whole line, such as "Pets/cat.gif: no known emotion tag".
    QString text;
    /// What is wrong, in words for the user.
    QString reason;

    bool operator==(const MemeProblem&) const = default;
};

/// Reads and checks what is in one folder. Works on any thread.
namespace MemeFolderReader {

/// Returns nothing if there is no readable manifest; only one that exists is a problem then.
std::optional<MemeManifest> readManifest(const QDir& directory, const QString& folderID,
    const std::optional<QString>& context, std::vector<MemeProblem>& problems);

/// The entries of the manifest, then each picture that it does not name, without tags.
std::vector<MemeManifestEntry> readEntries(
    const FolderState& folder, std::vector<MemeProblem>& problems);

/// A label made of a file's name: "Cat judging" for "cat-judging.gif".
QString displayName(const QString& file);

/// Whether all but its picture is right with an entry.
bool canBePicked(const MemeManifestEntry& entry);

/// For the log: what is ignored of an entry that can be picked.
std::optional<QString> remark(
    const MemeManifestEntry& entry, const std::optional<QString>& context);

/// Gives the picture in a file.
using Decode = std::function<tl::expected<MemeAnimation, MemePictureProblem>(const QString& path)>;

/// The meme of an entry. The picture is asked for only once all else is right.
tl::expected<Meme, MemeProblem> validate(const MemeManifestEntry& entry, const QDir& directory,
    const std::optional<QString>& folderID, const std::optional<QString>& context,
    const Decode& decode);

} // namespace MemeFolderReader

} // namespace pobblewig
