// Draws the reactions that come with the program.
// Usage: starter-memes DIRECTORY, or starter-memes --sheet FILE.png for all of them in one picture.

#include "PobblewigStarterMemes/Reaction.h"
#include "PobblewigStarterMemes/ReactionSheet.h"
#include "PobblewigStarterMemes/WebPFilm.h"

#include <QFile>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>

namespace {

using namespace pobblewig;

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    const auto isWritten = !bytes.isEmpty() && file.open(QIODevice::WriteOnly)
        && file.write(bytes) == bytes.size() && file.flush();
    if (!isWritten)
        std::fprintf(stderr, "Couldn't write %s\n", qUtf8Printable(path));
    return isWritten;
}

bool writeAll(const QDir& directory)
{
    return directory.mkpath(QStringLiteral("."))
        && std::ranges::all_of(Reaction::all(),
            [&](const Reaction& reaction) {
                return write(directory.filePath(reaction.file()), encodedWebP(reaction.draw()));
            })
        && write(directory.filePath(QLatin1String(MemeManifest::fileName)),
            json::text(Reaction::manifest()));
}

int drawSheet(int argc, char** argv)
{
    // The sheet has words, and needs no screen for them.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return reactionSheet().save(QGuiApplication::arguments().at(2)) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const QByteArrayView first = argc > 1 ? argv[1] : "";
    if (argc == 3 && first == "--sheet")
        return drawSheet(argc, argv);
    if (argc == 2 && !first.startsWith("-"))
        return writeAll(QDir(QFile::decodeName(argv[1]))) ? 0 : 1;
    std::fputs("Usage: starter-memes DIRECTORY\n       starter-memes --sheet FILE.png\n", stderr);
    return 2;
}
