#include "prompts/SettingInstructions.h"

#include "foundation/Overloaded.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool isTold(const Setting& setting)
{
    return setting.assistant >= AssistantAccess::proposed;
}

bool isTold(const Mascot& mascot)
{
    return mascot.offer == Mascot::Offer::userAndAssistant;
}

QString encoding(const SettingKind& kind)
{
    const Overloaded words {
        [](const SwitchSetting&) { return QStringLiteral("true or false"); },
        [](const NumberSetting&) { return QStringLiteral("a whole number"); },
        [](const PercentSetting&) { return QStringLiteral("a factor"); },
        [](const ChoicesSetting&) { return QStringLiteral("an array of strings"); },
        [](const ListSetting& list) { return QStringLiteral("an array of %1").arg(list.items); },
        [](const auto&) { return QStringLiteral("a string"); },
    };
    return std::visit(words, kind);
}

QStringList ids(const std::vector<SettingOption>& options)
{
    QStringList ids;
    for (const auto& option : options)
        ids.append(option.id);
    return ids;
}

/// The key with its sample value.
QString named(const Setting& setting)
{
    auto example = setting.sample.toString();
    if (const auto* choices = std::get_if<ChoicesSetting>(&setting.kind))
        example += QStringLiteral(", from ") + Prompts::listed(ids(choices->options({})), u"and");
    const auto key = setting.key.toString();
    return example.isEmpty() ? key : QStringLiteral("%1 (%2)").arg(key, example);
}

/// The keys one by one, except those whose name already describes the value.
QString named(const std::vector<const Setting*>& settings)
{
    QStringList names;
    QStringList endings;
    for (const auto& ending :
        { QStringLiteral("Enabled"), QStringLiteral("Minutes"), QStringLiteral("Hours") }) {
        const auto ends = [&](const auto* setting) { return setting->key.endsWith(ending); };
        if (std::ranges::any_of(settings, ends))
            endings.append(ending);
    }
    const auto isSummedUp = [&](QStringView key) {
        return std::ranges::any_of(endings, [&](const auto& end) { return key.endsWith(end); });
    };
    for (const auto* setting : settings) {
        if (!isSummedUp(setting->key))
            names.append(named(*setting));
    }
    if (!endings.isEmpty())
        names.append(QStringLiteral("the keys ending in ") + Prompts::listed(endings, u"or"));
    return Prompts::listed(names, u"and");
}

} // namespace

QStringList Prompts::settingKeys(SettingCatalog::Rows settings)
{
    QStringList keys;
    for (const auto& setting : settings) {
        if (isTold(setting))
            keys.append(setting.key.toString());
    }
    return keys;
}

QString Prompts::settingEncodings(SettingCatalog::Rows settings)
{
    QStringList order { QStringLiteral("a string"), QStringLiteral("true or false"),
        QStringLiteral("a whole number") };
    std::map<QString, std::vector<const Setting*>> groups;
    for (const auto& setting : settings) {
        const auto group = encoding(setting.kind);
        if (isTold(setting))
            groups[group].push_back(&setting);
        if (!order.contains(group))
            order.append(group);
    }
    QStringList parts;
    for (const auto& group : order) {
        if (groups.contains(group))
            parts.append(QStringLiteral("%1 for %2").arg(group, named(groups[group])));
    }
    return parts.join(QStringLiteral("; "));
}

QStringList Prompts::mascotIDs(Mascot::All mascots)
{
    QStringList ids;
    for (const auto& mascot : mascots) {
        if (isTold(mascot))
            ids.append(mascot.id);
    }
    return ids;
}

QString Prompts::mascotColors(QStringView separator, Mascot::All mascots)
{
    QStringList parts;
    for (const auto& mascot : mascots) {
        QStringList colors;
        for (const auto& scheme : mascot.schemes)
            colors.append(scheme.id);
        if (isTold(mascot))
            parts.append(QStringLiteral("%1: %2").arg(mascot.id, colors.join(separator)));
    }
    return parts.join(QStringLiteral("; "));
}

QString Prompts::listed(const QStringList& words, QStringView conjunction)
{
    if (words.size() < 2)
        return words.join(QString());
    const auto comma = words.size() > 2 ? QStringLiteral(",") : QString();
    return QStringLiteral("%1%2 %3 %4")
        .arg(words.first(words.size() - 1).join(QStringLiteral(", ")), comma, conjunction,
            words.last());
}

QString Prompts::quoted(const QStringList& words)
{
    return u'"' + words.join(QStringLiteral("\",\"")) + u'"';
}

} // namespace pobblewig
