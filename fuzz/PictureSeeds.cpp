// Writes a small picture of each kind into a directory, for PicturesFuzz to begin with.

#include "SamplePictures.h"

#include <QCoreApplication>
#include <QDir>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QDir directory(QCoreApplication::arguments().value(1));
    directory.mkpath(QStringLiteral("."));
    for (const auto& [name, bytes] : pobblewig::SamplePictures::all()) {
        QFile file(directory.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return 1;
    }
    return 0;
}
