#include "settings/EnvironmentWriting.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace pobblewig {

namespace {

constexpr QStringView heading = u"# Chosen in Pobblewig's settings";

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(EnvironmentWriting)
};

QString quoted(QString value)
{
    for (const auto character : { u'\\', u'"', u'`', u'$' })
        value.replace(character, QStringLiteral("\\%1").arg(QChar(character)));
    return u'"' + value + u'"';
}

/// Where our own lines begin.
qsizetype ownStart(const QString& text)
{
    const auto found = text.lastIndexOf(heading);
    const auto isLine = found == 0 || (found > 0 && text[found - 1] == u'\n');
    return isLine ? found : text.size();
}

} // namespace

std::optional<QString> EnvironmentWriting::changed(const QString& text, const Environment& values)
{
    const auto start = ownStart(text);
    auto expected = EnvironmentFile::parse(text.first(start));
    auto own = EnvironmentFile::parse(text.sliced(start));
    for (const auto& [name, value] : values)
        own[name] = value;
    std::erase_if(own, [](const auto& entry) { return entry.second.isEmpty(); });
    auto result = text.first(start);
    if (!result.isEmpty() && !result.endsWith(u'\n'))
        result += u'\n';
    if (!own.empty())
        result += heading.toString() + u'\n';
    result += lines(own);
    own.merge(expected);
    return EnvironmentFile::parse(result) == own ? std::optional(result) : std::nullopt;
}

QString EnvironmentWriting::lines(const Environment& values)
{
    QString lines;
    for (const auto& [name, value] : values)
        lines += QStringLiteral("%1=%2\n").arg(name, quoted(value));
    return lines;
}

tl::expected<void, FileError> EnvironmentWriting::write(
    const QString& path, const Environment& values, const FileOperations& operations)
{
    QFile file(path);
    const auto isNew = !file.exists();
    if (!isNew && (!QFileInfo(path).isFile() || file.size() > EnvironmentFile::largestFile))
        return tl::unexpected(
            FileError { Texts::tr("%1 is no file that Pobblewig reads").arg(path) });
    if (!isNew && !file.open(QIODevice::ReadOnly))
        return tl::unexpected(FileError { file.errorString() });
    const auto text = changed(QString::fromUtf8(file.readAll()), values);
    if (!text)
        return tl::unexpected(FileError {
            Texts::tr("the file %1 has a quote that does not end. Mend it first.").arg(path) });
    if (!QDir().mkpath(QFileInfo(path).path()))
        return tl::unexpected(FileError { Texts::tr("the folder of %1 is missing").arg(path) });
    auto written = writeDurably(path, text->toUtf8(), operations);
    if (written)
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return written;
}

} // namespace pobblewig
