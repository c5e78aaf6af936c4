#include "foundation/JSONFileStore.h"

#include "foundation/ISO8601.h"
#include "foundation/Log.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QStandardPaths>

namespace pobblewig {

namespace {

constexpr qint64 largestFile = 64 * 1024 * 1024;
constexpr int deepestNesting = 128;

/// Finds the quotation mark that ends a string, or the end of the text. Starts inside the string.
qsizetype endOfString(QByteArrayView text, qsizetype from)
{
    for (auto at = text.indexOf('"', from); at >= 0; at = text.indexOf('"', at + 1)) {
        auto first = at;
        while (first > from && text[first - 1] == '\\')
            --first;
        if ((at - first) % 2 == 0)
            return at;
    }
    return text.size();
}

bool isNestedTooDeep(QByteArrayView text)
{
    int depth = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const auto letter = text[at];
        if (letter == '"')
            at = endOfString(text, at + 1);
        else if (letter == '{' || letter == '[')
            ++depth;
        else if (letter == '}' || letter == ']')
            --depth;
        if (depth > deepestNesting)
            return true;
    }
    return false;
}

tl::expected<QJsonValue, QString> parsed(const QByteArray& text)
{
    if (isNestedTooDeep(text))
        return tl::unexpected(QStringLiteral("nested deeper than %1 levels").arg(deepestNesting));
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(text, &error);
    if (document.isNull())
        return tl::unexpected(
            QStringLiteral("%1 at offset %2").arg(error.errorString()).arg(error.offset));
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

} // namespace

JSONFileStore::JSONFileStore(DataDirectory directory, const QString& fileName)
    : m_directory(std::move(directory))
    , m_path(m_directory.path.filePath(fileName))
{
}

void JSONFileStore::remove() const
{
    m_directory.operations->remove(m_path);
}

QDir JSONFileStore::defaultDirectory()
{
    const QDir base(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    return QDir(base.filePath(QStringLiteral("Pobblewig")));
}

void JSONFileStore::migrateLegacyDirectory(const QDir& base)
{
    const QFileInfo old(base.filePath(QStringLiteral("SkritBuddy")));
    const QFileInfo current(base.filePath(QStringLiteral("Pobblewig")));
    if (!old.isDir() || current.exists() || current.isSymLink())
        return;
    QFile directory(old.filePath());
    if (!directory.rename(current.filePath()))
        Log::line(QStringLiteral("buddy: legacy data directory migration failed: %1")
                      .arg(directory.errorString()));
}

void JSONFileStore::migrateLegacyDefaultDirectory()
{
    auto base = defaultDirectory();
    base.setPath(QFileInfo(base.path()).path());
    migrateLegacyDirectory(base);
}

std::optional<QJsonValue> JSONFileStore::readDocument() const
{
    QFile file(m_path);
    if (!QFileInfo(m_path).isFile()) {
        m_directory.health->unreadable.erase(m_path);
        return std::nullopt;
    }
    if (file.size() > largestFile) {
        moveAside(QStringLiteral("larger than 64 MiB"));
        return std::nullopt;
    }
    const auto text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (file.error() != QFile::NoError) {
        leaveAlone(file.errorString());
        return std::nullopt;
    }
    m_directory.health->unreadable.erase(m_path);
    const auto value = parsed(text);
    if (value)
        return *value;
    moveAside(value.error());
    return std::nullopt;
}

void JSONFileStore::moveAside(const QString& problem) const
{
    const auto time = ISO8601::format(m_directory.clock()).replace(u':', u'-');
    const auto backup = QStringLiteral("%1.corrupt-%2").arg(m_path, time);
    if (!QFile::rename(m_path, backup)) {
        leaveAlone(problem);
        return;
    }
    m_directory.health->unreadable.erase(m_path);
    const auto name = QFileInfo(backup).fileName();
    m_directory.health->setAside.append(name);
    Log::line(QStringLiteral("buddy: corrupt store %1 moved to %2: %3")
                  .arg(QFileInfo(m_path).fileName(), name, problem));
}

void JSONFileStore::leaveAlone(const QString& problem) const
{
    const auto [place, isNew] = m_directory.health->unreadable.insert_or_assign(m_path, problem);
    if (isNew)
        Log::line(QStringLiteral("buddy: store %1 cannot be read: %2")
                      .arg(QFileInfo(m_path).fileName(), problem));
}

bool JSONFileStore::isUnreadable() const
{
    return m_directory.health->unreadable.contains(m_path);
}

tl::expected<void, FileError> JSONFileStore::write(const QByteArray& text) const
{
    if (text.size() > largestFile)
        return tl::unexpected(FileError { QStringLiteral("the file would exceed 64 MiB") });
    return writeDurably(m_path, text, *m_directory.operations);
}

void JSONFileStore::record(const tl::expected<void, FileError>& outcome) const
{
    auto& problems = m_directory.health->problems;
    if (outcome)
        problems.erase(m_path);
    else
        problems.insert_or_assign(m_path, outcome.error().description());
}

} // namespace pobblewig
