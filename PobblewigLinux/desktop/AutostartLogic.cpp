#include "PobblewigLinux/desktop/AutostartLogic.h"

#include "PobblewigLinux/desktop/DesktopEntry.h"

#include <algorithm>

namespace pobblewig {

namespace {

/// Escapes a value of the type string.
QString escaped(QString text)
{
    return text.replace(u'\\', QStringLiteral("\\\\"));
}

/// Quotes one word of a command line. Its own escapes are part of the value, which is escaped
/// again.
QString quoted(const QString& word)
{
    QString quoted;
    for (const auto character : word) {
        if (QStringView(u"\"`$\\").contains(character))
            quoted += u'\\';
        quoted += character;
        if (character == u'%')
            quoted += character;
    }
    return escaped(u'"' + quoted + u'"');
}

/// Some desktops look for a program whose name has the percent sign still doubled, but not for the
/// program of an argument.
QString commandLine(const QString& program)
{
    if (!program.contains(u'%'))
        return quoted(program);
    return QStringLiteral("sh -c %1 %2")
        .arg(quoted(QStringLiteral("exec \"$0\"")), quoted(program));
}

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control;
}

} // namespace

bool AutostartLogic::startsProgram(QByteArrayView file)
{
    const auto entry = DesktopEntryLogic::parse({}, file, {});
    return entry && entry->startsWithDesktop;
}

std::optional<QByteArray> AutostartLogic::file(const QString& program)
{
    if (std::ranges::any_of(program, isControl))
        return std::nullopt;
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Pobblewig\n"
                          "Comment=A small companion for your studies\n"
                          "Exec=%1\n"
                          "TryExec=%2\n"
                          "Icon=com.pobblewig.app\n"
                          "Terminal=false\n"
                          "StartupNotify=false\n")
        .arg(commandLine(program), escaped(program))
        .toUtf8();
}

} // namespace pobblewig
