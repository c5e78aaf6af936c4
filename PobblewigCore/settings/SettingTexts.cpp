#include "settings/SettingTexts.h"

#include "foundation/Overloaded.h"

#include <QCoreApplication>

#include <algorithm>

namespace pobblewig {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("SettingCatalog", text);
}

QString counted(int count, const SettingUnit& unit)
{
    return translated(count == 1 ? unit.one : unit.many).arg(count);
}

QString labelOf(const std::vector<SettingOption>& options, const QString& id)
{
    const auto found = std::ranges::find(options, id, &SettingOption::id);
    return found == options.end() ? id : found->label;
}

} // namespace

QString SettingTexts::label(const Setting& setting)
{
    return translated(setting.label);
}

QString SettingTexts::explanation(const Setting& setting)
{
    return setting.explanation ? translated(setting.explanation) : QString();
}

QString SettingTexts::refusal(const Setting& setting)
{
    const Overloaded demanded {
        [](const TextSetting& text) { return text.form.toString(); },
        [](const ListSetting&) {
            return translated(QT_TRANSLATE_NOOP("SettingCatalog", "a list of valid entries"));
        },
        [](const auto&) {
            return translated(QT_TRANSLATE_NOOP("SettingCatalog", "one of the values offered"));
        },
    };
    return translated(QT_TRANSLATE_NOOP("SettingCatalog", "This must be %1. Nothing was changed."))
        .arg(std::visit(demanded, setting.kind));
}

QString SettingTexts::value(const Setting& setting, const AppSettings& settings)
{
    const Overloaded words {
        [&](const SwitchSetting& flag) {
            return translated(settings.*flag.field ? QT_TRANSLATE_NOOP("SettingCatalog", "on")
                                                   : QT_TRANSLATE_NOOP("SettingCatalog", "off"));
        },
        [&](const NumberSetting& number) { return counted(settings.*number.field, *number.unit); },
        [&](const PercentSetting& percent) {
            return QStringLiteral("%1%").arg(qRound(settings.*percent.field * 100));
        },
        [&](const ChoiceSetting& choice) {
            return labelOf(choice.options(settings), choice.chosen(settings));
        },
        [&](const TextSetting& text) { return settings.*text.field; },
        [&](const auto&) {
            const auto list = entries(setting, settings).join(QStringLiteral(", "));
            return list.isEmpty() ? translated(QT_TRANSLATE_NOOP("SettingCatalog", "none")) : list;
        },
    };
    return std::visit(words, setting.kind);
}

QStringList SettingTexts::entries(const Setting& setting, const AppSettings& settings)
{
    if (const auto* list = std::get_if<ListSetting>(&setting.kind))
        return list->entries(settings);
    QStringList labels;
    if (const auto* choices = std::get_if<ChoicesSetting>(&setting.kind)) {
        for (const auto& id : choices->chosen(settings))
            labels.append(labelOf(choices->options(settings), id));
    }
    return labels;
}

} // namespace pobblewig
