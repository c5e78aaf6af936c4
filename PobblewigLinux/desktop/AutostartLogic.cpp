#include "PobblewigLinux/desktop/AutostartLogic.h"

#include "PobblewigLinux/desktop/DesktopEntry.h"

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

} // namespace

bool AutostartLogic::startsProgram(QByteArrayView file)
{
    const auto entry = DesktopEntryLogic::parse({}, file, {});
    return entry && entry->startsWithDesktop;
}

QByteArray AutostartLogic::file(const QString& program)
{
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Pobblewig\n"
                          "Comment=A small companion for your studies\n"
                          "Exec=%1\n"
                          "TryExec=%2\n"
                          "Icon=com.pobblewig.app\n"
                          "Terminal=false\n"
                          "StartupNotify=false\n")
        .arg(quoted(program), escaped(program))
        .toUtf8();
}

} // namespace pobblewig
