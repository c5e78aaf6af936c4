#pragma once

#include "memes/MemeLibrary.h"

#include <QDate>

namespace pobblewig {

/// What the user can change in the library. Each change begins with what is on the disk at that
/// moment, so nothing edited by hand is lost, and ends in a scan. Packs are never changed.
///
/// An error is a sentence for the user.
class MemeDesk {
public:
    using Outcome = tl::expected<void, QString>;

    /// A meme that was moved to the trash.
    struct Removed {
        QString folderID;
        MemeManifestEntry entry;
        QString path;
        QString pathInTrash;
    };

    /// Without a directory nothing can be changed.
    MemeDesk(MemeLibrary& library, const std::optional<DataDirectory>& userDirectory);

    Task<Outcome> makeFolder(QString name);
    Task<Outcome> setFolderEnabled(QString folderID, bool isEnabled);

    /// Copies these files into a folder, under other names where theirs are taken. They are without
    /// tags at first. Stops at the first that is no picture.
    Task<Outcome> addFiles(QString folderID, QStringList paths);

    /// Keeps a picture that was pasted.
    Task<Outcome> addPicture(QString folderID, QImage picture, QDate today);

    /// Replaces the entry of that file. A slot of the mascot is taken from the meme that had it.
    Task<Outcome> change(QString folderID, MemeManifestEntry entry);

    Task<tl::expected<Removed, QString>> remove(QString folderID, QString file);
    Task<Outcome> restore(Removed removed);

private:
    /// The folder as it is now, if it may be changed.
    Task<tl::expected<FolderState, QString>> openFolder(QString folderID);
    Outcome writeManifest(const FolderState& folder) const;
    Outcome saveFolderSettings(const FolderSettings& settings) const;
    Outcome freeSlots(const MemeManifestEntry& entry, const QString& folderID) const;
    Task<Outcome> finished(Outcome outcome);

    MemeLibrary& m_library;
    std::optional<DataDirectory> m_userDirectory;
};

} // namespace pobblewig
