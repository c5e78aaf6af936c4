#pragma once

#include "memes/MemeFolderReader.h"
#include "memes/MemePictureShelf.h"
#include "memes/MemeStamps.h"

namespace pobblewig {

/// What is in the library.
struct MemeScan {
    using Decoder = std::shared_ptr<const MemePictureDecoding>;

    struct Orders {
        MemePlaces places;
        FolderSettings settings;
        Decoder decoder;
        /// What the last scan found; may be null. Pictures that have not changed since are taken
        /// from it.
        std::shared_ptr<const MemeScan> previous = {};
        /// Whether a folder is read again even if its stamps are those of the last scan.
        bool readsAllFolders = true;
    };

    /// Sorted by id, each once. A folder's memes win over those of the folders before it.
    std::vector<Meme> memes;
    std::vector<MemeProblem> problems;
    /// The default folder first.
    std::vector<FolderState> folderStates;
    FolderSettings folderSettings;
    /// Taken before anything was read, so that what changes meanwhile is seen by the next scan.
    MemeStamps stamps;

    /// The problems of each folder with its manifest, by the folder's id.
    std::map<QString, std::vector<MemeProblem>> readingProblems;
    MemePictureShelf pictures;
    /// For the log.
    QStringList remarks;

    /// Reads the library. Blocks, so it is for another thread than the main one; pictures are
    /// decoded on the pool's threads. Null if it was stopped.
    static std::shared_ptr<const MemeScan> run(const Orders& orders, QThreadPool& pool,
        MemeScanProgress& progress, const std::stop_token& stop);
};

} // namespace pobblewig
