#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

/// One row of a folder's "memes.json".
struct MemeManifestEntry {
    /// The name of a picture in the folder.
    QString file;
    /// Tags of emotions and of the mascot's slots. Unknown ones stay as they are.
    std::vector<QString> emotions = {};
    /// How often the meme is picked beside others; 1 if absent.
    std::optional<double> weight = {};
    /// The user's label for it.
    std::optional<QString> name = {};

    /// The same entry without the tags of the mascot's slots.
    MemeManifestEntry withoutMascotSlots() const;

    bool operator==(const MemeManifestEntry&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using E = MemeManifestEntry;
        return std::tuple { required("file", &E::file), required("emotions", &E::emotions),
            optional("weight", &E::weight), optional("name", &E::name) };
    }
};

struct MemeManifest {
    static constexpr auto fileName = "memes.json";

    std::vector<MemeManifestEntry> memes;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("memes", &MemeManifest::memes) };
    }
};

} // namespace pobblewig
