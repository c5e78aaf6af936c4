#include "memes/MemeFolderReader.h"

#include "memes/MemePictures.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>

namespace pobblewig::MemeFolderReader {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("MemeFolderReader", text);
}

tl::expected<MemeManifest, QString> parsed(const QByteArray& text)
{
    QJsonParseError error {};
    const auto document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        return tl::unexpected(error.errorString());
    return json::decode<MemeManifest>(document.object()).map_error([](const auto& problem) {
        return problem.description();
    });
}

tl::expected<MemeManifest, QString> read(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return tl::unexpected(QStringLiteral("the file cannot be read"));
    const auto text = file.read(MemePictures::mostBytes);
    return parsed(text);
}

/// What the tags of an entry mean.
struct Tags {
    explicit Tags(const std::vector<QString>& written)
    {
        for (const auto& tag : written) {
            if (const auto emotion = MemeTags::emotion(tag))
                emotions.insert(*emotion);
            else if (const auto slot = MemeTags::slot(tag))
                slots.insert(*slot);
            else
                unknown.append(tag);
        }
    }

    std::set<MemeEmotion> emotions;
    std::set<MemeMascotSlot> slots;
    QStringList unknown;
};

QString label(const MemeManifestEntry& entry, const std::optional<QString>& context)
{
    return context ? *context + u'/' + entry.file : entry.file;
}

/// What is wrong with an entry: for the log, and for the user.
struct Fault {
    QString text;
    QString reason;
};

QString unknownTags(const Tags& tags)
{
    const auto known = QStringLiteral("no known emotion tag");
    if (tags.unknown.isEmpty())
        return known;
    return known + QStringLiteral(" (got: %1)").arg(tags.unknown.join(QStringLiteral(", ")));
}

std::optional<Fault> fault(const Tags& tags, double weight)
{
    if (tags.emotions.empty() && tags.slots.empty())
        return Fault { unknownTags(tags),
            tr(QT_TRANSLATE_NOOP(
                "MemeFolderReader", "It has no tag yet, so it is never picked.")) };
    if (!(weight > 0))
        return Fault { QStringLiteral("weight must be positive"),
            tr(QT_TRANSLATE_NOOP(
                "MemeFolderReader", "Its weight is not above 0, so it is never picked.")) };
    return std::nullopt;
}

/// A name that leads out of the folder is none of a picture in it.
bool staysInFolder(const QString& file)
{
    return !file.contains(u'/') && file != QLatin1String("..");
}

tl::expected<MemeAnimation, MemePictureProblem> picture(
    const QString& file, const QDir& directory, const Decode& decode)
{
    return staysInFolder(file) ? decode(directory.filePath(file))
                               : tl::unexpected(MemePictureProblem::missing);
}

} // namespace

std::optional<MemeManifest> readManifest(const QDir& directory, const QString& folderID,
    const std::optional<QString>& context, std::vector<MemeProblem>& problems)
{
    const auto path = directory.filePath(QLatin1String(MemeManifest::fileName));
    if (!QFileInfo::exists(path))
        return std::nullopt;
    auto manifest = read(path);
    if (manifest)
        return std::move(*manifest);
    problems.push_back({ .folderID = folderID,
        .file = {},
        .text = QStringLiteral("%1memes.json: unreadable manifest (%2)")
                    .arg(context ? *context + u'/' : QString(), manifest.error()),
        .reason = tr(QT_TRANSLATE_NOOP("MemeFolderReader",
                         "The list of this folder, memes.json, cannot be read: %1"))
                      .arg(manifest.error()) });
    return std::nullopt;
}

std::vector<MemeManifestEntry> readEntries(
    const FolderState& folder, std::vector<MemeProblem>& problems)
{
    auto manifest = readManifest(folder.directory, folder.id, folder.issueContext(), problems);
    auto entries = manifest ? std::move(manifest->memes) : std::vector<MemeManifestEntry>();
    std::set<QString> named { QLatin1String(MemeManifest::fileName) };
    for (const auto& entry : entries)
        named.insert(entry.file);
    for (const auto& item : MemeFolders::visibleContents(folder.directory)) {
        const auto file = item.fileName();
        if (!named.contains(file) && MemePictures::isPicture(item.absoluteFilePath()))
            entries.push_back({ .file = file, .name = displayName(file) });
    }
    return entries;
}

QString displayName(const QString& file)
{
    static const QRegularExpression separators(QStringLiteral("[-_.]"));
    const auto dot = file.lastIndexOf(u'.');
    const auto pieces =
        file.left(dot > 0 ? dot : file.size()).split(separators, Qt::SkipEmptyParts);
    if (pieces.isEmpty())
        return file;
    const auto name = pieces.join(u' ');
    return name.left(1).toUpper() + name.mid(1);
}

bool canBePicked(const MemeManifestEntry& entry)
{
    return staysInFolder(entry.file) && !fault(Tags(entry.emotions), entry.weight.value_or(1));
}

std::optional<QString> remark(const MemeManifestEntry& entry, const std::optional<QString>& context)
{
    const auto unknown = Tags(entry.emotions).unknown;
    if (unknown.isEmpty())
        return std::nullopt;
    return label(entry, context) + QStringLiteral(": ignoring unknown emotion tag(s): ")
        + unknown.join(QStringLiteral(", "));
}

tl::expected<Meme, MemeProblem> validate(const MemeManifestEntry& entry, const QDir& directory,
    const std::optional<QString>& folderID, const std::optional<QString>& context,
    const Decode& decode)
{
    const auto name = label(entry, context);
    const auto failure = [&](const Fault& fault) {
        return tl::unexpected(MemeProblem { folderID.value_or(QString()), entry.file,
            name + QStringLiteral(": ") + fault.text, fault.reason });
    };
    const Tags tags(entry.emotions);
    if (const auto found = fault(tags, entry.weight.value_or(1)))
        return failure(*found);
    auto animation = picture(entry.file, directory, decode);
    if (!animation)
        return failure({ QStringLiteral("missing or undecodable image"),
            MemePictures::inWords(animation.error()) });
    return Meme { .id = entry.file,
        .name = entry.name.value_or(entry.file),
        .emotions = tags.emotions,
        .weight = entry.weight.value_or(1),
        .folderID = folderID,
        .mascotSlots = tags.slots,
        .animation = *std::move(animation) };
}

} // namespace pobblewig::MemeFolderReader
