#pragma once

#include "foundation/DataDirectory.h"
#include "foundation/Lifeline.h"
#include "foundation/Task.h"
#include "memes/MemePicker.h"
#include "memes/MemeScan.h"

#include <QFuture>

namespace pobblewig {

/// The reaction pictures: those that come with the program, the user's own folders and packs. A
/// directory tree that the user may edit by hand: each folder has pictures and a "memes.json".
///
/// Scans run on threads of their own; everything else is on the main thread and touches memory
/// only. A broken entry never stops the library: it is left out and told in `issues`.
class MemeLibrary {
public:
    /// Creates the user's directory and its starter files. Nothing is scanned yet. Without a
    /// directory the library stays empty.
    MemeLibrary(const std::optional<DataDirectory>& userDirectory,
        std::optional<QDir> bundledDirectory, std::shared_ptr<MemePictureDecoding> decoder);
    ~MemeLibrary();

    /// Scans everything. Only files that have not changed are not decoded again.
    Task<> reload();

    /// Does nothing if no directory and no manifest has changed since the last scan. Otherwise
    /// scans what has.
    Task<> reloadIfChanged();

    /// Ends a scan under way. What the library knew before stays.
    void stopScan();

    bool hasLoaded() const { return m_scan != nullptr; }
    bool isScanning() const { return !m_underWay.isFinished(); }
    /// How many scans have been done.
    int scanCount() const { return m_scanCount; }
    /// The pictures of the scan under way that have been looked at, and how many there are.
    std::pair<int, int> progress() const { return { m_progress.done, m_progress.total }; }

    const std::vector<Meme>& memes() const { return scan().memes; }
    bool isEmpty() const { return memes().empty(); }
    int count() const { return int(memes().size()); }
    QStringList issues() const;
    int skippedCount() const { return int(scan().problems.size()); }
    const std::vector<MemeProblem>& problems() const { return scan().problems; }

    /// For the settings, such as "12 memes · 1 skipped".
    QString summaryLine() const;

    std::vector<MemeFolder> folders() const;
    const std::vector<FolderState>& folderStates() const { return scan().folderStates; }
    /// Those of the default folder.
    std::vector<MemeManifestEntry> userEntries() const;
    /// Empty for an unknown id.
    std::vector<MemeManifestEntry> folderEntries(const QString& folderID) const;
    const FolderSettings& folderSettings() const { return scan().folderSettings; }
    const MemeStamps& manifestTimestamps() const { return scan().stamps; }

    /// A meme of the emotion, the heavier the more often, and not the excluded one if there is
    /// another. `random` gives a number from 0 to below 1.
    std::optional<Meme> pick(MemeEmotion emotion, const std::optional<QString>& excludingID,
        const std::function<double()>& random) const;

    std::map<MemeMascotSlot, Meme> mascotMemes() const;

    /// The whole animation of a meme, decoded now if it rests. What cannot be decoded any more
    /// stays the small still.
    Task<MemeAnimation> animation(Meme meme);

    /// Why pictures cannot be decoded at all, in words for the user.
    const std::optional<QString>& problem() const { return m_problem; }

    /// Called when a scan is done.
    std::function<void()> onScanned = [] {};

private:
    const MemeScan& scan() const;
    Task<> scanAgain(bool readsAllFolders);
    MemeScan::Orders orders(bool readsAllFolders) const;
    void take(std::shared_ptr<const MemeScan> scan);

    std::optional<DataDirectory> m_userDirectory;
    MemePlaces m_places;
    std::shared_ptr<MemePictureDecoding> m_decoder;
    std::optional<QString> m_problem;
    /// Null before the first scan.
    std::shared_ptr<const MemeScan> m_scan;
    MemePicker m_picker;
    int m_scanCount = 0;
    MemeScanProgress m_progress;
    QFuture<std::shared_ptr<const MemeScan>> m_underWay;
    std::stop_source m_stop;
    Lifeline m_life;
    /// Apart from the pool that writes files, which must not wait for a scan. The last member: a
    /// scan under way ends before anything else goes.
    QThreadPool m_pool;
};

} // namespace pobblewig
