#include "PobblewigLinux/desktop/Autostart.h"

#include "PobblewigLinux/desktop/AutostartLogic.h"

#include <QFile>
#include <QStandardPaths>

namespace pobblewig {

Autostart::Autostart(const QDir& directory, QString program)
    : m_path(directory.absoluteFilePath(QStringLiteral("com.pobblewig.app.desktop")))
    , m_program(std::move(program))
{
}

bool Autostart::isEnabled() const
{
    constexpr qint64 largestFile = 64 << 10;
    QFile file(m_path);
    return file.open(QIODevice::ReadOnly) && AutostartLogic::startsProgram(file.read(largestFile));
}

tl::expected<void, FileError> Autostart::setEnabled(bool isEnabled)
{
    if (isEnabled) {
        const auto text = AutostartLogic::file(m_program);
        if (!text)
            return tl::unexpected(
                FileError { QStringLiteral("the program's path contains a line break") });
        return writeDurably(m_path, *text, FileOperations());
    }
    QFile file(m_path);
    if (file.exists() && !file.remove())
        return tl::unexpected(FileError { file.errorString() });
    return {};
}

QDir Autostart::defaultDirectory()
{
    return { QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/autostart") };
}

} // namespace pobblewig
