#include "memory/ChatArchive.h"

#include "foundation/JSONFileStore.h"

namespace pobblewig {

tl::expected<void, FileError> ChatArchive::write(const DataDirectory& directory,
    const std::vector<ChatMessage>& messages, const QString& dayKey, const QUuid& sessionID)
{
    const auto id = json::keyText(sessionID).first(8);
    const JSONFileStore file(directory, QStringLiteral("chat-%1-%2.json").arg(dayKey, id));
    return file.save(messages);
}

} // namespace pobblewig
