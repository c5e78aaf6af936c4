#include "PobblewigLinux/desktop/DesktopEntry.h"

#include <QProcess>

#include <algorithm>
#include <array>
#include <map>

namespace pobblewig {

namespace {

const QByteArrayList otherKeys { "Exec", "Hidden", "NoDisplay", "StartupWMClass", "Type",
    "X-GNOME-Autostart-enabled" };

using Values = std::map<QByteArrayView, QByteArrayView>;

/// Programs whose file name does not identify the application that they run.
constexpr std::array<QStringView, 14> runners {
    u"bash",
    u"dbus-launch",
    u"electron",
    u"flatpak",
    u"gjs",
    u"java",
    u"perl",
    u"pkexec",
    u"python",
    u"python3",
    u"sh",
    u"snap",
    u"wine",
    u"xdg-open",
};

/// The values of the group "Desktop Entry". The first value of a repeated key counts.
Values values(QByteArrayView file, const QByteArrayList& wanted)
{
    Values values;
    bool isInGroup = false;
    while (!file.isEmpty()) {
        const auto end = file.indexOf('\n');
        const auto line = (end < 0 ? file : file.first(end)).trimmed();
        file = end < 0 ? QByteArrayView() : file.sliced(end + 1);
        if (line.startsWith('[')) {
            if (isInGroup)
                break;
            isInGroup = line == QByteArrayView("[Desktop Entry]");
            continue;
        }
        const auto equals = isInGroup ? line.indexOf('=') : -1;
        if (equals < 0)
            continue;
        const auto key = line.first(equals).trimmed();
        if (wanted.contains(key))
            values.emplace(key, line.sliced(equals + 1).trimmed());
    }
    return values;
}

QString text(const Values& values, QByteArrayView key)
{
    const auto found = values.find(key);
    return found == values.end() ? QString() : QString::fromUtf8(found->second);
}

/// The preferred key first.
QByteArrayList nameKeys(const QStringList& languages)
{
    QByteArrayList keys;
    for (const auto& language : languages)
        keys += "Name[" + language.toUtf8() + ']';
    keys += "Name";
    return keys;
}

QString name(const Values& values, const QByteArrayList& keys)
{
    for (const auto& key : keys) {
        if (auto name = text(values, key); !name.isEmpty())
            return name;
    }
    return {};
}

QString program(const QString& command)
{
    for (const auto& word : QProcess::splitCommand(command)) {
        const auto name = word.section(u'/', -1);
        if (name == u"env" || word.contains(u'='))
            continue;
        return std::ranges::count(runners, name) > 0 ? QString() : name;
    }
    return {};
}

} // namespace

std::optional<DesktopEntry> DesktopEntryLogic::parse(
    const QString& id, QByteArrayView file, const QStringList& languages)
{
    const auto names = nameKeys(languages);
    const auto found = values(file, names + otherKeys);
    const auto bestName = name(found, names);
    if (text(found, "Type") != u"Application" || text(found, "Hidden") == u"true"
        || bestName.isEmpty())
        return std::nullopt;
    return DesktopEntry {
        .id = id,
        .name = bestName,
        .windowClass = text(found, "StartupWMClass"),
        .program = program(text(found, "Exec")),
        .isShownInMenus = text(found, "NoDisplay") != u"true",
        .startsWithDesktop = text(found, "X-GNOME-Autostart-enabled") != u"false",
    };
}

} // namespace pobblewig
