#include "folders/AppDataAccessService.h"

#include "folders/AppDataAccessLogic.h"
#include "tools/MemoryToolExecutor.h"

#include <QCoroFuture>
#include <QDir>
#include <QFileInfo>
#include <QtConcurrentRun>

#include <algorithm>

namespace pobblewig {

namespace {

namespace Logic = AppDataAccessLogic;
using Kind = AppDataFault::Kind;

tl::expected<AppDataLocation, AppDataAccessError> locate(
    const std::vector<AppDataSource>& sources, const QString& name, const QString& path)
{
    const auto source = std::ranges::find(sources, name, &AppDataSource::name);
    if (source == sources.end())
        return tl::unexpected(AppDataAccessError {
            QStringLiteral("error: unknown app data source '%1' (use apps_list_sources)")
                .arg(Logic::shownName(name)) });
    if (!source->enabled)
        return tl::unexpected(
            AppDataAccessError { QStringLiteral("refused: source '%1' is disabled in Settings")
                                     .arg(Logic::shownName(name)) });
    return Logic::resolve(Logic::expandTilde(source->rootPath, QDir::homePath()), path);
}

/// The last component of a path, or the root's own name if the path is empty.
QString lastName(const AppDataLocation& location)
{
    const auto whole = QDir::cleanPath(location.root + u'/' + location.path);
    return Logic::shownName(QFileInfo(whole).fileName());
}

QString answer(const AppDataFault& fault, const AppDataLocation& location)
{
    if (fault.kind == Kind::escapesRoot)
        return QStringLiteral("refused: path escapes source root");
    return QStringLiteral("error: '%1': %2").arg(lastName(location), fault.description());
}

QString denial(const QString& name)
{
    return QStringLiteral("refused: '%1' matches the secret denylist").arg(Logic::shownName(name));
}

QString tooBig(const QString& name, qint64 size)
{
    return QStringLiteral("refused: %1 is %2 bytes, over the %3 MB limit")
        .arg(name, QString::number(size), QString::number(Logic::maxFileBytes >> 20));
}

QString shown(QByteArrayView bytes, int lines)
{
    constexpr qsizetype longestHeading = 100;
    const auto end =
        Logic::tail(bytes, lines, MemoryToolExecutor::maxResultCharacters - longestHeading);
    if (end.shown == end.total)
        return end.text;
    return QStringLiteral("[showing last %1 of %2 lines — %3 earlier lines omitted]\n")
               .arg(end.shown)
               .arg(end.total)
               .arg(end.total - end.shown)
        + end.text;
}

QString read(const AppDataReading& reading, const AppDataLocation& location, int lines)
{
    const auto file = reading.open(location);
    if (!file && file.error().kind == Kind::escapesRoot)
        return answer(file.error(), location);
    if (const auto denied = Logic::deniedPart(location.path))
        return denial(*denied);
    if (!file)
        return answer(file.error(), location);
    if (const auto denied = Logic::deniedPart((*file)->realPath()))
        return denial(*denied);
    if ((*file)->size() > Logic::maxFileBytes)
        return tooBig(lastName(location), (*file)->size());

    // One more byte reveals a file that has grown since.
    const auto bytes = (*file)->read(Logic::maxFileBytes + 1);
    if (!bytes)
        return answer(bytes.error(), location);
    if (bytes->size() > Logic::maxFileBytes)
        return tooBig(lastName(location), bytes->size());
    if (!Logic::looksLikeText(*bytes))
        return QStringLiteral("refused: binary file (not text)");
    return shown(*bytes, lines);
}

QString list(const AppDataReading& reading, const AppDataLocation& location)
{
    const auto listing = reading.list(location, Logic::maxListingEntries);
    if (const auto denied = Logic::deniedFolder(location.path))
        return denial(*denied);
    if (!listing && listing.error().kind == Kind::notThere)
        return QStringLiteral("error: no such directory: %1 (use apps_read_file for files)")
            .arg(Logic::shownName(location.path.isEmpty() ? location.root : location.path));
    if (!listing)
        return answer(listing.error(), location);
    if (const auto denied = Logic::deniedFolder(listing->realPath()))
        return denial(*denied);
    QStringList lines;
    for (const auto& entry : listing->newestFirst())
        lines.append(Logic::listingLine(entry));
    if (lines.isEmpty())
        return QStringLiteral("(empty directory)");
    if (listing->omitted() > 0)
        lines.append(QStringLiteral("(%1 more entries — ask for a subpath to narrow down)")
                         .arg(listing->omitted()));
    return lines.join(u'\n');
}

} // namespace

AppDataAccessService::AppDataAccessService(
    SourcesProvider sourcesProvider, const AppDataReading& reading)
    : m_sourcesProvider(std::move(sourcesProvider))
    , m_reading(reading)
{
}

Task<QString> AppDataAccessService::listSources()
{
    const auto sources = m_sourcesProvider();
    QStringList lines;
    for (const auto& source : sources)
        lines.append(Logic::sourceLine(source.name, source.rootPath, source.enabled));
    if (lines.isEmpty())
        co_return QStringLiteral(
            "no app data sources configured (the user can add them in Settings)");
    co_return lines.join(u'\n');
}

Task<QString> AppDataAccessService::listFiles(QString source, std::optional<QString> subpath)
{
    const auto sources = m_sourcesProvider();
    const auto location = locate(sources, source, subpath.value_or(QString()));
    if (!location)
        co_return location.error().message;
    const auto listed = co_await QtConcurrent::run(
        [&reading = m_reading, location = *location] { return list(reading, location); });
    co_return listed;
}

Task<QString> AppDataAccessService::readFile(
    QString source, QString path, std::optional<int> tailLines)
{
    const auto sources = m_sourcesProvider();
    const auto location = locate(sources, source, path);
    if (!location)
        co_return location.error().message;
    const auto lines =
        std::clamp(tailLines.value_or(Logic::defaultTailLines), 1, Logic::maxTailLines);
    const auto text =
        co_await QtConcurrent::run([&reading = m_reading, location = *location, lines] {
            return read(reading, location, lines);
        });
    co_return text;
}

} // namespace pobblewig
