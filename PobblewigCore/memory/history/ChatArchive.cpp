#include "memory/history/ChatArchive.h"

#include "foundation/JSONFileStore.h"
#include "memory/history/Transcript.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>
#include <functional>

namespace pobblewig {

namespace {

constexpr qint64 largestFile = 64 * 1024 * 1024;

} // namespace

tl::expected<void, FileError> ChatArchive::write(const DataDirectory& directory,
    const std::vector<ChatMessage>& messages, const QString& dayKey, const QUuid& sessionID)
{
    const JSONFileStore file(directory, name(dayKey, sessionID));
    auto archived = file.load<std::vector<ChatMessage>>().value_or(std::vector<ChatMessage>());
    Transcript::merge(archived, messages);
    return file.save(archived);
}

QString ChatArchive::name(const QString& dayKey, const QUuid& sessionID)
{
    return QStringLiteral("chat-%1-%2.json").arg(dayKey, json::keyText(sessionID).first(8));
}

QStringList ChatArchive::names(const QDir& directory)
{
    auto names = directory.entryList({ QStringLiteral("chat-*.json") }, QDir::Files);
    names.removeIf([](const QString& name) { return !day(name).isValid(); });
    std::ranges::sort(names, std::greater());
    return names;
}

QDate ChatArchive::day(const QString& fileName)
{
    static const QRegularExpression form(QStringLiteral("^chat-([0-9-]{10})[^/]*[.]json$"));
    return QDate::fromString(form.match(fileName).captured(1), Qt::ISODate);
}

std::vector<ChatMessage> ChatArchive::read(const QString& path)
{
    QFile file(path);
    if (file.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return {};
    const auto document = QJsonDocument::fromJson(file.readAll());
    return json::decode<std::vector<ChatMessage>>(document.array())
        .value_or(std::vector<ChatMessage>());
}

void ChatArchive::sweepChatArchives(const DataDirectory& directory, TimePoint now,
    const Calendar& calendar, ConversationKeeping keeping)
{
    const auto oldest = calendar.day(now).addDays(-daysKept(keeping));
    const auto keepsNone = keeping == ConversationKeeping::lastMessages;
    for (const auto& name : names(directory.path)) {
        if (keepsNone || day(name) < oldest)
            directory.operations->remove(directory.path.filePath(name));
    }
}

} // namespace pobblewig
