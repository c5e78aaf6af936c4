#include "PobblewigDesktop/settings/SettingsSearch.h"

#include "settings/SettingCatalog.h"
#include "settings/SettingTexts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pobblewig {

namespace {

/// In the order of `SettingsPage`.
constexpr std::array pageIDs { "general", "companion", "activity", "connections", "privacy" };

QString pageOf(const Setting& setting)
{
    // Nothing is there to be found yet.
    if (setting.key.startsWith(u"cloudSync"))
        return {};
    if (setting.key == u"appDataSources")
        return QStringLiteral("folders");
    if (setting.key == u"actionConfirmations")
        return QStringLiteral("confirmations");
    return QLatin1String(pageIDs[size_t(setting.page)]);
}

/// How well a setting fits, from 0 (the same) on; nothing if it does not.
std::optional<int> distance(const Setting& setting, const QString& words)
{
    constexpr auto anyCase = Qt::CaseInsensitive;
    const auto label = SettingTexts::label(setting);
    if (label.compare(words, anyCase) == 0)
        return 0;
    if (label.startsWith(words, anyCase))
        return 1;
    if (label.contains(words, anyCase))
        return 2;
    const auto all = label + u' ' + SettingTexts::explanation(setting);
    const auto wanted = words.split(u' ', Qt::SkipEmptyParts);
    const auto hasAll =
        std::ranges::all_of(wanted, [&](const auto& word) { return all.contains(word, anyCase); });
    return hasAll ? std::optional(3) : std::nullopt;
}

} // namespace

QStringList SettingsSearch::names()
{
    QStringList names;
    for (const auto& setting : SettingCatalog::all()) {
        if (!pageOf(setting).isEmpty())
            names.append(SettingTexts::label(setting));
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

std::optional<SettingsSearch::Place> SettingsSearch::place(const QString& words)
{
    const auto wanted = words.trimmed();
    if (wanted.isEmpty())
        return std::nullopt;
    std::optional<std::pair<int, Place>> best;
    for (const auto& setting : SettingCatalog::all()) {
        const auto page = pageOf(setting);
        const auto found = page.isEmpty() ? std::nullopt : distance(setting, wanted);
        if (found && (!best || *found < best->first))
            best = { *found, { page, setting.key.toString() } };
    }
    return best ? std::optional(best->second) : std::nullopt;
}

} // namespace pobblewig
