#include "PobblewigLinux/desktop/ApplicationIdentifiers.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

struct Row {
    QStringView name;
    QStringView identifier;
};

/// An identifier is itself a known name, so a Flatpak id needs a row only if it differs.
constexpr auto applicationIdentifiers = std::to_array<Row>({
    { u"pobblewig", u"com.pobblewig.app" },

    // Browsers
    { u"google-chrome", u"com.google.Chrome" },
    { u"google-chrome-stable", u"com.google.Chrome" },
    { u"google-chrome-beta", u"com.google.Chrome" },
    { u"google-chrome-unstable", u"com.google.Chrome" },
    { u"chromium", u"org.chromium.Chromium" },
    { u"chromium-browser", u"org.chromium.Chromium" },
    { u"firefox", u"org.mozilla.firefox" },
    { u"firefox-esr", u"org.mozilla.firefox" },
    { u"firefox-developer-edition", u"org.mozilla.firefoxdeveloperedition" },
    { u"firefox-nightly", u"org.mozilla.nightly" },
    { u"librewolf", u"io.gitlab.librewolf-community" },
    { u"microsoft-edge", u"com.microsoft.edgemac" },
    { u"microsoft-edge-stable", u"com.microsoft.edgemac" },
    { u"microsoft-edge-beta", u"com.microsoft.edgemac" },
    { u"microsoft-edge-dev", u"com.microsoft.edgemac" },
    { u"com.microsoft.Edge", u"com.microsoft.edgemac" },
    { u"brave", u"com.brave.Browser" },
    { u"brave-browser", u"com.brave.Browser" },
    { u"vivaldi", u"com.vivaldi.Vivaldi" },
    { u"vivaldi-stable", u"com.vivaldi.Vivaldi" },
    { u"opera", u"com.operasoftware.Opera" },
    { u"com.opera.Opera", u"com.operasoftware.Opera" },
    { u"zen", u"app.zen-browser.zen" },
    { u"zen-browser", u"app.zen-browser.zen" },
    { u"app.zen_browser.zen", u"app.zen-browser.zen" },
    { u"tor browser", u"org.torproject.torbrowser" },
    { u"org.torproject.torbrowser-launcher", u"org.torproject.torbrowser" },
    { u"epiphany", u"org.gnome.Epiphany" },
    { u"falkon", u"org.kde.falkon" },
    { u"konqueror", u"org.kde.konqueror" },

    // Terminals
    { u"konsole", u"org.kde.konsole" },
    { u"yakuake", u"org.kde.yakuake" },
    { u"gnome-terminal", u"org.gnome.Terminal" },
    { u"gnome-terminal-server", u"org.gnome.Terminal" },
    { u"kgx", u"org.gnome.Console" },
    { u"ptyxis", u"org.gnome.Ptyxis" },
    { u"kitty", u"net.kovidgoyal.kitty" },
    { u"alacritty", u"org.alacritty" },
    { u"foot", u"org.codeberg.dnkl.foot" },
    { u"footclient", u"org.codeberg.dnkl.foot" },
    { u"wezterm", u"com.github.wez.wezterm" },
    { u"org.wezfurlong.wezterm", u"com.github.wez.wezterm" },
    { u"ghostty", u"com.mitchellh.ghostty" },
    { u"tilix", u"com.gexperts.Tilix" },
    { u"terminator", u"net.tenshu.Terminator" },
    { u"xfce4-terminal", u"org.xfce.terminal" },
    { u"xterm", u"org.invisible-island.xterm" },
    { u"uxterm", u"org.invisible-island.xterm" },
    { u"debian-xterm", u"org.invisible-island.xterm" },
    { u"debian-uxterm", u"org.invisible-island.xterm" },

    // Development
    { u"code", u"com.microsoft.VSCode" },
    { u"com.visualstudio.code", u"com.microsoft.VSCode" },
    { u"codium", u"com.vscodium" },
    { u"vscodium", u"com.vscodium" },
    { u"com.vscodium.codium", u"com.vscodium" },
    { u"jetbrains-idea", u"com.jetbrains.intellij" },
    { u"intellij-idea-ultimate", u"com.jetbrains.intellij" },
    { u"com.jetbrains.IntelliJ-IDEA-Ultimate", u"com.jetbrains.intellij" },
    { u"jetbrains-idea-ce", u"com.jetbrains.intellij.ce" },
    { u"intellij-idea-community", u"com.jetbrains.intellij.ce" },
    { u"com.jetbrains.IntelliJ-IDEA-Community", u"com.jetbrains.intellij.ce" },
    { u"jetbrains-pycharm", u"com.jetbrains.pycharm" },
    { u"pycharm-professional", u"com.jetbrains.pycharm" },
    { u"com.jetbrains.PyCharm-Professional", u"com.jetbrains.pycharm" },
    { u"jetbrains-pycharm-ce", u"com.jetbrains.pycharm.ce" },
    { u"pycharm-community", u"com.jetbrains.pycharm.ce" },
    { u"com.jetbrains.PyCharm-Community", u"com.jetbrains.pycharm.ce" },
    { u"jetbrains-clion", u"com.jetbrains.CLion" },
    { u"jetbrains-webstorm", u"com.jetbrains.WebStorm" },
    { u"jetbrains-studio", u"com.google.android.studio" },
    { u"android-studio", u"com.google.android.studio" },
    { u"com.google.AndroidStudio", u"com.google.android.studio" },
    { u"sublime_text", u"com.sublimetext.4" },
    { u"sublime-text", u"com.sublimetext.4" },
    { u"com.sublimetext.three", u"com.sublimetext.4" },
    { u"emacs", u"org.gnu.Emacs" },
    { u"gvim", u"org.vim.gvim" },
    { u"zed", u"dev.zed.Zed" },
    { u"kate", u"org.kde.kate" },
    { u"kwrite", u"org.kde.kwrite" },
    { u"kdevelop", u"org.kde.kdevelop" },
    { u"qtcreator", u"org.qt-project.qtcreator" },
    { u"io.qt.QtCreator", u"org.qt-project.qtcreator" },
    { u"gnome-builder", u"org.gnome.Builder" },
    { u"gnome-text-editor", u"org.gnome.TextEditor" },
    { u"gedit", u"org.gnome.gedit" },
    { u"eclipse", u"org.eclipse.platform.ide" },
    { u"org.eclipse.Java", u"org.eclipse.platform.ide" },
    { u"rstudio", u"org.rstudio.RStudio" },
    { u"matlab", u"com.mathworks.matlab" },

    // Office and study
    { u"libreoffice", u"org.libreoffice.LibreOffice" },
    { u"libreoffice-startcenter", u"org.libreoffice.LibreOffice" },
    { u"libreoffice-writer", u"org.libreoffice.LibreOffice" },
    { u"libreoffice-calc", u"org.libreoffice.LibreOffice" },
    { u"libreoffice-impress", u"org.libreoffice.LibreOffice" },
    { u"libreoffice-draw", u"org.libreoffice.LibreOffice" },
    { u"libreoffice-base", u"org.libreoffice.LibreOffice" },
    { u"libreoffice-math", u"org.libreoffice.LibreOffice" },
    { u"soffice", u"org.libreoffice.LibreOffice" },
    { u"onlyoffice desktop editors", u"org.onlyoffice.desktopeditors" },
    { u"onlyoffice-desktopeditors", u"org.onlyoffice.desktopeditors" },
    { u"evince", u"org.gnome.Evince" },
    { u"papers", u"org.gnome.Papers" },
    { u"okular", u"org.kde.okular" },
    { u"xournalpp", u"com.github.xournalpp.xournalpp" },
    { u"zotero", u"org.zotero.zotero" },
    { u"texstudio", u"org.texstudio.TeXstudio" },
    { u"anki", u"net.ankiweb.Anki" },
    { u"obsidian", u"md.obsidian" },
    { u"md.obsidian.Obsidian", u"md.obsidian" },
    { u"notion", u"notion.id" },
    { u"notion-app", u"notion.id" },
    { u"joplin", u"net.cozic.joplin-desktop" },
    { u"net.cozic.joplin_desktop", u"net.cozic.joplin-desktop" },
    { u"logseq", u"com.logseq.Logseq" },
    { u"thunderbird", u"org.mozilla.thunderbird" },
    { u"thunderbird-esr", u"org.mozilla.thunderbird" },
    { u"evolution", u"org.gnome.Evolution" },
    { u"geary", u"org.gnome.Geary" },
    { u"kmail", u"org.kde.kmail2" },

    // Chat and meetings
    { u"slack", u"com.tinyspeck.slackmacgap" },
    { u"com.slack.Slack", u"com.tinyspeck.slackmacgap" },
    { u"discord", u"com.hnc.Discord" },
    { u"com.discordapp.Discord", u"com.hnc.Discord" },
    { u"telegram-desktop", u"com.tdesktop.Telegram" },
    { u"telegramdesktop", u"com.tdesktop.Telegram" },
    { u"org.telegram.desktop", u"com.tdesktop.Telegram" },
    { u"signal", u"org.whispersystems.signal-desktop" },
    { u"signal-desktop", u"org.whispersystems.signal-desktop" },
    { u"org.signal.Signal", u"org.whispersystems.signal-desktop" },
    { u"whatsapp-desktop", u"net.whatsapp.WhatsApp" },
    { u"whatsapp-for-linux", u"net.whatsapp.WhatsApp" },
    { u"element", u"im.riot.app" },
    { u"element-desktop", u"im.riot.app" },
    { u"im.riot.Riot", u"im.riot.app" },
    { u"fractal", u"org.gnome.Fractal" },
    { u"nheko", u"im.nheko.Nheko" },
    { u"zoom", u"us.zoom.xos" },
    { u"us.zoom.Zoom", u"us.zoom.xos" },
    { u"teams", u"com.microsoft.teams" },
    { u"microsoft teams - preview", u"com.microsoft.teams" },
    { u"teams-for-linux", u"com.microsoft.teams" },
    { u"com.github.IsmaelMartinez.teams_for_linux", u"com.microsoft.teams" },
    { u"skype", u"com.skype.skype" },
    { u"skypeforlinux", u"com.skype.skype" },
    { u"com.skype.Client", u"com.skype.skype" },
    { u"webex", u"com.webex.meetingmanager" },
    { u"mattermost", u"Mattermost.Desktop" },
    { u"com.mattermost.Desktop", u"Mattermost.Desktop" },

    // Media
    { u"spotify", u"com.spotify.client" },
    { u"com.spotify.Client", u"com.spotify.client" },
    { u"vlc", u"org.videolan.vlc" },
    { u"mpv", u"io.mpv" },
    { u"io.mpv.Mpv", u"io.mpv" },
    { u"totem", u"org.gnome.Totem" },
    { u"celluloid", u"io.github.celluloid_player.Celluloid" },
    { u"rhythmbox", u"org.gnome.Rhythmbox3" },
    { u"strawberry", u"org.strawberrymusicplayer.strawberry" },
    { u"elisa", u"org.kde.elisa" },
    { u"kodi", u"tv.kodi.Kodi" },
    { u"obs", u"com.obsproject.obs-studio" },
    { u"com.obsproject.Studio", u"com.obsproject.obs-studio" },
    { u"audacity", u"org.audacityteam.audacity" },
    { u"kdenlive", u"org.kde.kdenlive" },
    { u"gimp", u"org.gimp.GIMP" },
    { u"gimp-2.10", u"org.gimp.GIMP" },
    { u"gimp-3.0", u"org.gimp.GIMP" },
    { u"inkscape", u"org.inkscape.Inkscape" },
    { u"krita", u"org.kde.krita" },
    { u"blender", u"org.blenderfoundation.blender" },
    { u"org.blender.Blender", u"org.blenderfoundation.blender" },

    // Games
    { u"steam", u"com.valvesoftware.steam" },
    { u"steamwebhelper", u"com.valvesoftware.steam" },
    { u"lutris", u"net.lutris.Lutris" },
    { u"heroic", u"com.heroicgameslauncher.hgl" },
    { u"minecraft-launcher", u"com.mojang.minecraftlauncher" },
    { u"com.mojang.Minecraft", u"com.mojang.minecraftlauncher" },
    { u"prismlauncher", u"org.prismlauncher.PrismLauncher" },
    { u"retroarch", u"org.libretro.RetroArch" },

    // Files and settings
    { u"nautilus", u"org.gnome.Nautilus" },
    { u"dolphin", u"org.kde.dolphin" },
    { u"thunar", u"org.xfce.thunar" },
    { u"gnome-control-center", u"org.gnome.Settings" },
    { u"systemsettings", u"org.kde.systemsettings" },

    // Password managers
    { u"1password", u"com.1password.1password" },
    { u"com.onepassword.OnePassword", u"com.1password.1password" },
    { u"bitwarden", u"com.bitwarden.desktop" },
    { u"keepassxc", u"org.keepassxc.KeePassXC" },
    { u"seahorse", u"org.gnome.seahorse.Application" },
    { u"org.gnome.seahorse", u"org.gnome.seahorse.Application" },
    { u"kwalletmanager", u"org.kde.kwalletmanager" },
    { u"kwalletmanager5", u"org.kde.kwalletmanager" },
    { u"org.kde.kwalletmanager5", u"org.kde.kwalletmanager" },
    { u"secrets", u"org.gnome.World.Secrets" },
    { u"gnome-passwordsafe", u"org.gnome.World.Secrets" },
    { u"org.gnome.PasswordSafe", u"org.gnome.World.Secrets" },
    { u"proton pass", u"me.proton.Pass" },
    { u"proton-pass", u"me.proton.Pass" },
});

constexpr std::array<QStringView, 5> excluded {
    u"org.keepassxc.KeePassXC",
    u"org.gnome.seahorse.Application",
    u"org.kde.kwalletmanager",
    u"org.gnome.World.Secrets",
    u"me.proton.Pass",
};

std::optional<QString> find(QStringView name)
{
    const auto isSame = [&](QStringView other) {
        return name.compare(other, Qt::CaseInsensitive) == 0;
    };
    for (const auto& row : applicationIdentifiers) {
        if (isSame(row.name) || isSame(row.identifier))
            return row.identifier.toString();
    }
    return std::nullopt;
}

/// Snap uses "firefox_firefox" or "snap.firefox.firefox"; Steam games use "steam_app_570".
QStringView package(QStringView name)
{
    constexpr QStringView snap = u"snap.";
    if (name.startsWith(snap))
        name = name.sliced(snap.size()).split(u'.').front();
    return name.split(u'_').front();
}

} // namespace

std::optional<QString> ApplicationIdentifiers::identifier(const QString& name)
{
    const auto known = find(name);
    return known ? known : find(package(name));
}

std::span<const QStringView> ApplicationIdentifiers::alwaysExcluded()
{
    return excluded;
}

} // namespace pobblewig
