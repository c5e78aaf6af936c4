#include "folders/AppDataAccessLogic.h"

#include "folders/SecretDenylist.h"
#include "foundation/ISO8601.h"

#include <QDir>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr qsizetype longestName = 255;

QString withoutOuterSlashes(QStringView path)
{
    while (path.startsWith(u'/'))
        path = path.sliced(1);
    while (path.endsWith(u'/'))
        path.chop(1);
    return path.toString();
}

bool climbsAbove(const QString& path)
{
    const auto clean = QDir::cleanPath(path);
    return clean == u".." || clean.startsWith(u"../");
}

/// The name as the most lenient file system compares it, its words joined by "-".
QString folded(const QString& name)
{
    auto result = name.normalized(QString::NormalizationForm_KC).toLower();
    result.removeIf([](QChar character) { return character.category() == QChar::Other_Format; });
    while (result.endsWith(u'.') || result.endsWith(u' '))
        result.chop(1);
    return result.replace(u'_', u'-').replace(u' ', u'-');
}

bool fits(QStringView name, QStringView pattern)
{
    const auto pieces = pattern.split(u'*');
    if (pieces.size() == 1)
        return name == pattern;
    if (!name.startsWith(pieces.first()))
        return false;
    name = name.sliced(pieces.first().size());
    if (!name.endsWith(pieces.last()))
        return false;
    name.chop(pieces.last().size());
    for (const auto& piece : pieces.sliced(1, pieces.size() - 2)) {
        const auto place = name.indexOf(piece);
        if (place < 0)
            return false;
        name = name.sliced(place + piece.size());
    }
    return true;
}

bool fitsAny(QStringView name, std::span<const QStringView> patterns)
{
    return std::ranges::any_of(patterns, [&](auto pattern) { return fits(name, pattern); });
}

bool endsInSecretWord(QStringView part)
{
    return std::ranges::any_of(SecretDenylist::words(), [&](auto word) {
        return part.endsWith(word)
            && (part.size() == word.size() || part.chopped(word.size()).endsWith(u'-'));
    });
}

bool isSecret(QStringView name)
{
    return fitsAny(name, SecretDenylist::files())
        || std::ranges::any_of(name.split(u'.'), endsInSecretWord);
}

QStringView original(QStringView name)
{
    const auto endings = SecretDenylist::endingsOfCopies();
    const auto ending =
        std::ranges::find_if(endings, [&](auto candidate) { return name.endsWith(candidate); });
    return ending == endings.end() ? name : original(name.chopped(ending->size()));
}

bool isDeniedFolder(const QString& name)
{
    return fitsAny(folded(name), SecretDenylist::folders());
}

bool breaksTheLine(QChar character)
{
    const auto category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line
        || category == QChar::Separator_Paragraph;
}

} // namespace

QString AppDataAccessLogic::expandTilde(const QString& path, const QString& home)
{
    return path == u"~" || path.startsWith(u"~/") ? home + path.sliced(1) : path;
}

auto AppDataAccessLogic::resolve(const QString& rootPath, const QString& request)
    -> tl::expected<AppDataLocation, AppDataAccessError>
{
    if (!QDir::isAbsolutePath(rootPath))
        return tl::unexpected(AppDataAccessError {
            QStringLiteral("error: '%1': not an absolute path").arg(shownName(rootPath)) });
    // The system would cut such a name off at the NUL.
    if (request.contains(QChar::Null) || rootPath.contains(QChar::Null))
        return tl::unexpected(AppDataAccessError {
            QStringLiteral("error: '%1': no name of a file").arg(shownName(request)) });
    const auto path = withoutOuterSlashes(request);
    if (climbsAbove(path))
        return tl::unexpected(
            AppDataAccessError { QStringLiteral("refused: path escapes source root") });
    return AppDataLocation { .root = rootPath, .path = path };
}

bool AppDataAccessLogic::isDenied(const QString& basename)
{
    const auto name = folded(basename);
    return isSecret(name) || isSecret(original(name));
}

std::optional<QString> AppDataAccessLogic::deniedPart(const QString& path)
{
    auto folders = QDir::cleanPath(path).split(u'/');
    const auto file = folders.takeLast();
    const auto folder = std::ranges::find_if(folders, isDeniedFolder);
    if (folder != folders.end())
        return *folder;
    return isDenied(file) ? std::optional(file) : std::nullopt;
}

bool AppDataAccessLogic::looksLikeText(QByteArrayView bytes)
{
    return !bytes.first(std::min<qsizetype>(bytes.size(), 8192)).contains('\0');
}

AppDataTail AppDataAccessLogic::tail(QByteArrayView bytes, int count)
{
    if (bytes.isEmpty())
        return {};
    if (bytes.endsWith('\n'))
        bytes.chop(1);
    qsizetype start = 0;
    int total = 1;
    for (auto place = bytes.size() - 1; place >= 0; --place) {
        if (bytes[place] != '\n')
            continue;
        if (total == count)
            start = place + 1;
        ++total;
    }
    return {
        .text = QString::fromUtf8(bytes.sliced(start)),
        .shown = std::min(total, count),
        .total = total,
    };
}

QString AppDataAccessLogic::shownName(const QString& name)
{
    auto shown = name.left(longestName);
    std::ranges::replace_if(shown, breaksTheLine, QChar::ReplacementCharacter);
    return name.size() > longestName ? shown + u'…' : shown;
}

QString AppDataAccessLogic::sourceLine(const QString& name, const QString& rootPath, bool enabled)
{
    return QStringLiteral("%1: %2%3")
        .arg(shownName(name), shownName(rootPath),
            enabled ? QString() : QStringLiteral(" (disabled)"));
}

QString AppDataAccessLogic::listingLine(const AppDataEntry& entry)
{
    return QStringLiteral("%1%2 — %3")
        .arg(shownName(entry.name), entry.isFolder ? QStringLiteral("/") : QString(),
            entry.modified ? ISO8601::format(*entry.modified) : QStringLiteral("unknown date"));
}

} // namespace pobblewig
