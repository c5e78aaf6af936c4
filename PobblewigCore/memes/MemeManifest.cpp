#include "memes/MemeManifest.h"

#include "memes/MemeEmotion.h"

namespace pobblewig {

MemeManifestEntry MemeManifestEntry::withoutMascotSlots() const
{
    auto entry = *this;
    std::erase_if(
        entry.emotions, [](const QString& tag) { return MemeTags::slot(tag).has_value(); });
    return entry;
}

} // namespace pobblewig
