#include "folders/AppDataAccessLogic.h"

#include "folders/SecretDenylist.h"
#include "foundation/ISO8601.h"
#include "foundation/Text.h"

#include <QDir>

#include <algorithm>

namespace pobblewig {

namespace {

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

/// Whether the words stand whole in the part.
bool contains(QStringView part, QStringView words)
{
    return QStringLiteral("-%1-").arg(part).contains(QStringLiteral("-%1-").arg(words));
}

bool endsWith(QStringView part, QStringView words)
{
    return QStringLiteral("-%1").arg(part).endsWith(QStringLiteral("-%1").arg(words));
}

bool isNumber(QStringView text)
{
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c.isDigit(); });
}

/// "token" for "token-(1)", "token-2026" and "token-backup".
QStringView withoutMarksOfCopies(QStringView part)
{
    for (;;) {
        const auto place = part.lastIndexOf(u'-');
        auto mark = part.sliced(place + 1);
        if (mark.startsWith(u'(') && mark.endsWith(u')'))
            mark = mark.sliced(1).chopped(1);
        if (place < 0 || !(isNumber(mark) || fitsAny(mark, SecretDenylist::wordsOfCopies())))
            return part;
        part = part.first(place);
    }
}

bool hasSecretWord(QStringView part)
{
    const auto end = withoutMarksOfCopies(part);
    return std::ranges::any_of(
               SecretDenylist::words(), [&](auto word) { return contains(part, word); })
        || std::ranges::any_of(
            SecretDenylist::lastWords(), [&](auto word) { return endsWith(end, word); });
}

/// Also looks at "server.key" in "server.key.txt". A name without its only ending is just a word.
bool isSecret(QStringView name)
{
    for (auto inner = name; inner.contains(u'.'); inner = inner.first(inner.lastIndexOf(u'.'))) {
        if (fitsAny(inner, SecretDenylist::files()))
            return true;
    }
    return fitsAny(name, SecretDenylist::files())
        || std::ranges::any_of(name.split(u'.'), hasSecretWord);
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

QByteArrayView lastLine(QByteArrayView bytes)
{
    return bytes.sliced(bytes.lastIndexOf('\n') + 1);
}

QString shortened(const QString& line, qsizetype characters)
{
    if (Text::characterCount(line) <= characters)
        return line;
    return Text::firstCharacters(line, characters - 1) + u'…';
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

std::optional<QString> AppDataAccessLogic::deniedFolder(const QString& path)
{
    const auto folders = QDir::cleanPath(path).split(u'/');
    const auto folder = std::ranges::find_if(folders, isDeniedFolder);
    return folder == folders.end() ? std::nullopt : std::optional(*folder);
}

std::optional<QString> AppDataAccessLogic::deniedPart(const QString& path)
{
    const auto clean = QDir::cleanPath(path);
    const auto slash = clean.lastIndexOf(u'/');
    if (auto folder = deniedFolder(clean.first(std::max<qsizetype>(slash, 0))))
        return folder;
    const auto file = clean.sliced(slash + 1);
    return isDenied(file) ? std::optional(file) : std::nullopt;
}

bool AppDataAccessLogic::looksLikeText(QByteArrayView bytes)
{
    return !bytes.first(std::min<qsizetype>(bytes.size(), 8192)).contains('\0');
}

AppDataTail AppDataAccessLogic::tail(QByteArrayView bytes, int count, qsizetype characters)
{
    if (bytes.isEmpty())
        return {};
    if (bytes.endsWith('\n'))
        bytes.chop(1);
    const auto total = int(bytes.count('\n')) + 1;
    auto text = shortened(QString::fromUtf8(lastLine(bytes)), characters);
    auto shown = 1;
    for (; shown < std::min(total, count); ++shown) {
        bytes.chop(lastLine(bytes).size() + 1);
        auto longer = QString::fromUtf8(lastLine(bytes)) + u'\n' + text;
        if (Text::characterCount(longer) > characters)
            break;
        text = std::move(longer);
    }
    return { .text = text, .shown = shown, .total = total };
}

QString AppDataAccessLogic::shownName(const QString& name)
{
    return Text::foreignLine(name);
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
