#include "memory/history/MemoryMigration.h"

#include "foundation/ISO8601.h"
#include "foundation/JSONFileStore.h"
#include "foundation/Log.h"
#include "memory/DailySessionStore.h"
#include "memory/SessionBoundary.h"
#include "memory/history/ChatHistoryStore.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace pobblewig {

namespace {

/// Basic facts about any "memory.json". Without a version, or with one that is not a whole number,
/// the file counts as current.
struct MemoryFileOutline {
    int version = MemoryMigration::currentMemorySchemaVersion;
    int notes = 0;
    int patterns = 0;
};

} // namespace

template <>
struct json::Codec<MemoryFileOutline> {
    static Decoded<MemoryFileOutline> decode(const QJsonValue& value, const Path&)
    {
        const auto object = value.toObject();
        return MemoryFileOutline {
            .version = object.value(QStringLiteral("version"))
                           .toInt(MemoryMigration::currentMemorySchemaVersion),
            .notes = int(object.value(QStringLiteral("notes")).toArray().size()),
            .patterns = int(object.value(QStringLiteral("patterns")).toArray().size()),
        };
    }
};

namespace {

constexpr QStringView stampForm = u"2026-03-01T08-15-00Z";

QString stamp(TimePoint time)
{
    return ISO8601::format(time).replace(u':', u'-');
}

std::optional<TimePoint> stampedTime(QString name)
{
    if (name.endsWith(u".json"))
        name.chop(5);
    auto text = name.right(stampForm.size());
    if (text.size() < stampForm.size())
        return std::nullopt;
    text[13] = u':';
    text[16] = u':';
    return ISO8601::parse(text);
}

TimePoint backupTime(const QFileInfo& file)
{
    const auto modified = std::chrono::milliseconds(file.lastModified().toMSecsSinceEpoch());
    return stampedTime(file.fileName()).value_or(TimePoint(modified));
}

QFileInfoList files(const DataDirectory& directory, const QStringList& patterns = {})
{
    return directory.path.entryInfoList(patterns, QDir::Files | QDir::Hidden);
}

tl::expected<QByteArray, FileError> contents(const QString& path)
{
    QFile file(path);
    auto bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (file.error() != QFile::NoError)
        return tl::unexpected(FileError { file.errorString() });
    return bytes;
}

/// Returns the path of the copy. Until the store saves, later launches reuse the first copy.
tl::expected<QString, FileError> backUp(
    const DataDirectory& directory, const QString& path, int version, TimePoint now)
{
    const auto bytes = contents(path);
    if (!bytes)
        return tl::unexpected(bytes.error());
    const auto name = QStringLiteral("memory.v%1-backup-%2.json").arg(version);
    for (const auto& earlier : files(directory, { name.arg(QStringLiteral("*")) })) {
        if (earlier.size() == bytes->size()
            && contents(earlier.filePath()).value_or(QByteArray()) == *bytes)
            return earlier.filePath();
    }
    auto backup = directory.path.filePath(name.arg(stamp(now)));
    return writeDurably(backup, *bytes, *directory.operations).map([&] { return backup; });
}

} // namespace

QString MigrationReport::migrationSummary() const
{
    QStringList events;
    if (memoryMigratedFromVersion) {
        events.append(QStringLiteral("memory.json v%1 → v2: %2 notes, %3 patterns preserved")
                          .arg(*memoryMigratedFromVersion)
                          .arg(notesPreserved)
                          .arg(patternsPreserved));
        if (memoryBackedUp)
            events.last() += QStringLiteral(", backup created");
    }
    if (legacyChatAdopted)
        events.append(QStringLiteral("pre-v2 chat adopted into an imported session"));
    return events.isEmpty() ? QStringLiteral("no migration needed")
                            : events.join(QStringLiteral("; "));
}

MigrationReport MemoryMigration::run(const DataDirectory& directory, TimePoint now)
{
    sweepBackupLitter(directory, now);
    MigrationReport report;
    const JSONFileStore file(directory, QStringLiteral("memory.json"));
    const auto outline = file.load<MemoryFileOutline>();
    if (!outline || outline->version >= currentMemorySchemaVersion)
        return report;

    if (const auto backup = backUp(directory, file.path(), outline->version, now)) {
        report.memoryBackedUp = true;
        report.memoryBackupPath = *backup;
    } else {
        Log::line(
            QStringLiteral("buddy: migration backup failed (continuing with lenient decode): %1")
                .arg(backup.error().description()));
    }
    report.memoryMigratedFromVersion = outline->version;
    report.notesPreserved = outline->notes;
    report.patternsPreserved = outline->patterns;
    Log::line(QStringLiteral("buddy: migrating memory.json v%1...").arg(outline->version));
    return report;
}

void MemoryMigration::sweepBackupLitter(
    const DataDirectory& directory, TimePoint now, int olderThan)
{
    const auto cutoff = now - std::chrono::days(olderThan);
    for (const auto& file : files(directory)) {
        if (isBackupLitter(file.fileName()) && backupTime(file) < cutoff)
            directory.operations->remove(file.filePath());
    }
}

bool MemoryMigration::isBackupLitter(const QString& name)
{
    return name.contains(u".corrupt-") || name.contains(u".sync-backup-")
        || (name.startsWith(u"memory.v") && name.contains(u"-backup-"));
}

bool MemoryMigration::adoptLegacyChatIfNeeded(
    DailySessionStore& sessions, ChatHistoryStore& history, TimePoint now, const Calendar& calendar)
{
    const auto& messages = history.transcript();
    if (!sessions.sessions().empty() || messages.empty())
        return false;
    const auto first = messages.front().timestamp;
    const auto last = messages.back().timestamp;
    const auto sessionID = QUuid::createUuid();
    history.adopt(sessionID);
    sessions.adoptImportedSession({
        .id = sessionID,
        .dayKey = SessionBoundary::dayKey(first, calendar),
        .startedAt = first,
        .lastActivityAt = last,
        .endedAt = last,
        .isImported = true,
    });
    sessions.ensureActiveSession(now, calendar);
    return true;
}

} // namespace pobblewig
