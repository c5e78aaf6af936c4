#pragma once

#include "support/FaultyFileOperations.h"

#include "foundation/DataDirectory.h"

#include <QTemporaryDir>

namespace pobblewig {

/// A directory of a test's own for the files of stores, where it always is 2026-03-01T08:15:00Z.
class ScratchDirectory {
public:
    operator DataDirectory() const
    {
        DataDirectory directory(path());
        directory.clock = [] { return TimePoint(std::chrono::seconds(1772352900)); };
        return directory;
    }

    /// The same, where one call of the system fails.
    DataDirectory failing(int call = 1) const
    {
        DataDirectory directory = *this;
        directory.operations = std::make_shared<FaultyFileOperations>(call);
        return directory;
    }

    QDir path() const { return m_directory.path(); }
    QString path(const QString& name) const { return m_directory.filePath(name); }

    QStringList names() const { return path().entryList(QDir::Files | QDir::Hidden); }

    /// Empty if there is no such file.
    QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("%s could not be written", qPrintable(name));
    }

private:
    QTemporaryDir m_directory;
};

} // namespace pobblewig
