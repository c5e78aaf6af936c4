#include "memory/history/ChatArchive.h"

#include "foundation/JSONFileStore.h"
#include "memory/history/Transcript.h"

namespace pobblewig {

namespace {

const QStringView prefix = u"chat-";

/// The day in an archive's name; invalid for other names.
QDate dayOf(const QString& fileName)
{
    constexpr qsizetype dayLength = 10;
    return QDate::fromString(fileName.mid(prefix.size(), dayLength), Qt::ISODate);
}

} // namespace

tl::expected<void, FileError> ChatArchive::write(const DataDirectory& directory,
    const std::vector<ChatMessage>& messages, const QString& dayKey, const QUuid& sessionID)
{
    const auto id = json::keyText(sessionID).first(8);
    const JSONFileStore file(directory, QStringLiteral("chat-%1-%2.json").arg(dayKey, id));
    auto archived = file.load<std::vector<ChatMessage>>().value_or(std::vector<ChatMessage>());
    Transcript::merge(archived, messages);
    return file.save(archived);
}

void ChatArchive::sweepChatArchives(const DataDirectory& directory, TimePoint now,
    const Calendar& calendar, ConversationKeeping keeping)
{
    const auto oldest = calendar.day(now).addDays(-daysKept(keeping));
    const auto keepsNone = keeping == ConversationKeeping::lastMessages;
    const auto pattern = QStringLiteral("chat-*.json");
    for (const auto& name : directory.path.entryList({ pattern }, QDir::Files)) {
        const auto day = dayOf(name);
        if (day.isValid() && (keepsNone || day < oldest))
            directory.operations->remove(directory.path.filePath(name));
    }
}

} // namespace pobblewig
