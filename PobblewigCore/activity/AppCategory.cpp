#include "activity/AppCategory.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

enum class Match {
    /// Anywhere in the identifier, also inside a word.
    part,
    /// For names so short that other words contain them.
    word
};

struct Name {
    AppCategory category;
    QStringView text;
    Match match = Match::part;
};

using enum AppCategory;

/// The first name that an identifier contains decides.
constexpr std::array names {
    Name { development, u"xcode" },
    Name { development, u"code.visualstudio" },
    Name { development, u"com.apple.terminal" },
    Name { development, u"iterm" },
    Name { development, u"sublimetext" },
    Name { development, u"nova" },
    Name { development, u"zed" },
    Name { development, u"konsole" },
    Name { development, u"kitty", Match::word },
    Name { development, u"alacritty" },
    Name { development, u"gnome-terminal" },
    Name { development, u"gnome.terminal" },
    Name { development, u"vscode" },
    Name { development, u"jetbrains" },
    Name { development, u"emacs" },
    Name { development, u"gvim", Match::word },
    Name { development, u"kate", Match::word },
    Name { browsing, u"safari" },
    Name { browsing, u"chrome" },
    Name { browsing, u"firefox" },
    Name { browsing, u"arc." },
    Name { browsing, u"edge" },
    Name { browsing, u"brave" },
    Name { browsing, u"orion" },
    Name { browsing, u"chromium" },
    Name { browsing, u"vivaldi" },
    Name { entertainment, u"spotify" },
    Name { entertainment, u"netflix" },
    Name { entertainment, u"tv.apple" },
    Name { entertainment, u"music.apple" },
    Name { entertainment, u"youtube" },
    Name { entertainment, u"vlc" },
    Name { entertainment, u"iina" },
    Name { entertainment, u"totem", Match::word },
    Name { entertainment, u"mpv", Match::word },
    Name { entertainment, u"rhythmbox" },
    Name { social, u"slack" },
    Name { social, u"discord" },
    Name { social, u"messages" },
    Name { social, u"telegram" },
    Name { social, u"whatsapp" },
    Name { social, u"zoom" },
    Name { social, u"teams" },
    Name { social, u"fractal", Match::word },
    Name { social, u"nheko", Match::word },
    Name { productivity, u"notes" },
    Name { productivity, u"notion" },
    // Also matches LibreOffice.
    Name { productivity, u"office" },
    Name { productivity, u"pages" },
    Name { productivity, u"numbers" },
    Name { productivity, u"keynote" },
    Name { productivity, u"obsidian" },
    Name { productivity, u"evince", Match::word },
    Name { productivity, u"okular", Match::word },
};

constexpr std::array<QStringView, 5> entertainingPages {
    u"youtube",
    u"netflix",
    u"twitch",
    u"tiktok",
    u"reddit",
};

bool holdsWord(QStringView text, QStringView word)
{
    for (auto at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
        const auto before = text.first(at);
        const auto after = text.sliced(at + word.size());
        if ((before.isEmpty() || !before.back().isLetterOrNumber())
            && (after.isEmpty() || !after.front().isLetterOrNumber()))
            return true;
    }
    return false;
}

bool isIn(QStringView identifier, const Name& name)
{
    return name.match == Match::word ? holdsWord(identifier, name.text)
                                     : identifier.contains(name.text);
}

} // namespace

AppCategory classify(const QString& bundleIdentifier, const std::optional<QString>& windowTitle)
{
    const auto identifier = bundleIdentifier.toLower();
    const auto* name =
        std::ranges::find_if(names, [&](const Name& each) { return isIn(identifier, each); });
    if (name == names.end())
        return other;
    if (name->category != browsing)
        return name->category;
    const auto title = windowTitle.value_or(QString()).toLower();
    const auto isNamed = [&](QStringView page) { return title.contains(page); };
    return std::ranges::any_of(entertainingPages, isNamed) ? entertainment : browsing;
}

} // namespace pobblewig
