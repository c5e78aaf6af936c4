#pragma once

#include "foundation/JSONCodec.h"
#include "memes/MemeManifest.h"

#include <QDir>

namespace pobblewig {

/// A folder of memes that a scan found.
struct DiscoveredFolder {
    QString id;
    QString name;
    bool isCommunity = false;
    QDir directory;
};

struct FolderDiscovery {
    std::vector<DiscoveredFolder> folders = {};
    /// Where the community packs are.
    std::optional<QDir> communityContainer = {};
    /// For the log.
    QStringList remarks = {};
};

/// A folder with what a scan read in it.
struct FolderState {
    QString id;
    QString name;
    bool isCommunity = false;
    bool enabled = true;
    QDir directory;
    /// Those of the manifest, then the pictures that it does not name.
    std::vector<MemeManifestEntry> entries;

    /// What stands in front of a problem's text: nothing in the default folder.
    std::optional<QString> issueContext() const;

    bool operator==(const FolderState&) const = default;
};

/// A folder for the editor.
struct MemeFolder {
    QString id;
    QString name;
    bool isCommunity = false;
    bool enabled = true;
    QDir directory;
    /// The entries with at least one known emotion.
    int memeCount = 0;
    int entryCount = 0;

    bool operator==(const MemeFolder&) const = default;
};

/// The content of "folders.json": the switch of each folder. A folder without one is on.
struct FolderSettings {
    struct Entry {
        bool enabled = true;

        bool operator==(const Entry&) const = default;

        static constexpr auto jsonFields()
        {
            return std::tuple { json::required("enabled", &Entry::enabled) };
        }
    };

    using Switches = std::map<QString, Entry>;

    static constexpr auto fileName = "folders.json";

    Switches folders;
    Switches community;

    bool isEnabled(const QString& folderID) const;
    void setEnabled(const QString& folderID, bool isEnabled);

    bool operator==(const FolderSettings&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { defaulted("folders", &FolderSettings::folders),
            defaulted("community", &FolderSettings::community) };
    }
};

/// Finds the folders of the library. Works on any thread.
namespace MemeFolders {

inline const QString defaultFolderID = QStringLiteral("my-memes");
inline const QString defaultFolderName = QStringLiteral("My Memes");
inline const QString communityIDPrefix = QStringLiteral("community/");
inline const QString communityDirectoryName = QStringLiteral("Community");

/// Lower case, with "-" between the words. Empty for a name without letters and digits.
QString slugifiedFolderID(const QString& name);

/// The id, with a number behind it if it is taken. Takes it.
QString uniqueFolderID(const QString& slug, std::set<QString>& used);

/// What is in the directory, sorted by name, without what begins with a dot.
QFileInfoList visibleContents(const QDir& directory);
std::vector<QDir> subdirectories(const QDir& directory);

/// All folders below the default one. Ids follow from the names, so they are the same at each scan.
FolderDiscovery discoverFolders(const QDir& userDirectory);

/// Folders whose memes win over those of the earlier ones: packs, the user's own, the default one.
std::vector<const FolderState*> loadOrder(const std::vector<FolderState>& folders);

} // namespace MemeFolders

} // namespace pobblewig
