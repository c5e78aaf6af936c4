#include "settings/SettingsWriteLogic.h"

#include "foundation/Overloaded.h"
#include "settings/SettingTexts.h"

#include <algorithm>

namespace pobblewig {

namespace {

QStringList ids(const std::vector<SettingOption>& options)
{
    QStringList ids;
    for (const auto& option : options)
        ids.append(option.id);
    return ids;
}

QString listed(const std::vector<SettingOption>& options)
{
    return ids(options).join(QStringLiteral(", "));
}

/// The id of the option that matches the given text.
std::optional<QString> chosenID(
    const ChoiceSetting& choice, const QString& given, const AppSettings& settings)
{
    const auto sensitivity = choice.meant ? Qt::CaseInsensitive : Qt::CaseSensitive;
    const auto meant = choice.meant ? choice.meant(given) : given;
    for (const auto& id : ids(choice.options(settings))) {
        if (id.compare(meant, sensitivity) == 0)
            return id;
    }
    return std::nullopt;
}

/// Returns false and changes nothing if the setting does not accept the value.
class Writer {
public:
    Writer(const JSONValue& value, AppSettings& settings)
        : m_value(value)
        , m_settings(settings)
    {
    }

    bool operator()(const SwitchSetting& flag) const
    {
        if (m_value.boolean())
            m_settings.*flag.field = *m_value.boolean();
        return m_value.boolean();
    }

    bool operator()(const NumberSetting& number) const
    {
        if (m_value.number())
            m_settings.*number.field =
                JSONValue::clampedInt(*m_value.number(), number.lowest, number.highest);
        return m_value.number();
    }

    bool operator()(const PercentSetting& percent) const
    {
        if (m_value.number())
            m_settings.*percent.field =
                JSONValue::clampedInt(*m_value.number() * 100, percent.lowest, percent.highest)
                / 100.0;
        return m_value.number();
    }

    bool operator()(const ChoiceSetting& choice) const
    {
        const auto id =
            m_value.string() ? chosenID(choice, *m_value.string(), m_settings) : std::nullopt;
        if (id)
            choice.choose(m_settings, *id);
        return id.has_value();
    }

    bool operator()(const ChoicesSetting& choices) const
    {
        const auto given = json::decode<std::vector<QString>>(m_value.toJson());
        const auto known = ids(choices.options(m_settings));
        const auto isKnown = [&](const QString& id) { return known.contains(id); };
        if (!given || !std::ranges::all_of(*given, isKnown))
            return false;
        choices.choose(m_settings, { given->begin(), given->end() });
        return true;
    }

    bool operator()(const TextSetting& text) const
    {
        if (!m_value.string() || !text.accepts(*m_value.string()))
            return false;
        m_settings.*text.field = *m_value.string();
        return true;
    }

    bool operator()(const ListSetting& list) const { return list.replace(m_settings, m_value); }

private:
    const JSONValue& m_value;
    AppSettings& m_settings;
};

QString refusal(const Setting& setting, const AppSettings& current)
{
    const Overloaded demanded {
        [](const SwitchSetting&) { return QStringLiteral("a boolean"); },
        [&](const ChoiceSetting& choice) {
            return QStringLiteral("one of: %1 %2")
                .arg(listed(choice.options(current)), choice.remark)
                .trimmed();
        },
        [&](const ChoicesSetting& choices) {
            return QStringLiteral("an array of: ") + listed(choices.options(current));
        },
        [](const TextSetting& text) { return text.form.toString(); },
        [](const ListSetting& list) { return list.form.toString(); },
        [](const auto&) { return QStringLiteral("a number"); },
    };
    return QStringLiteral("%1 must be %2").arg(setting.key, std::visit(demanded, setting.kind));
}

QString shortValue(const Setting& setting, const AppSettings& settings)
{
    const Overloaded words {
        [&](const SwitchSetting& flag) {
            return settings.*flag.field ? QStringLiteral("on") : QStringLiteral("off");
        },
        [&](const NumberSetting& number) {
            return QStringLiteral("%1%2").arg(settings.*number.field).arg(number.unit->suffix);
        },
        [&](const auto&) { return SettingTexts::value(setting, settings); },
    };
    return setting.summary ? setting.summary(settings) : std::visit(words, setting.kind);
}

} // namespace

QStringList SettingsWriteLogic::allowedKeys(Rows rows)
{
    QStringList keys;
    for (const auto& setting : rows) {
        if (setting.assistant != AssistantAccess::none)
            keys.append(setting.key.toString());
    }
    return keys;
}

bool SettingsWriteLogic::alwaysAsks(const QString& key, const JSONValue& value, Rows rows)
{
    const auto* setting = SettingCatalog::find(key, rows);
    if (!setting || setting->alwaysAsks == AlwaysAsks::none)
        return false;
    const auto* const isOn = value.boolean();
    return setting->alwaysAsks == AlwaysAsks::all || (isOn && !*isOn);
}

const Setting* SettingsWriteLogic::allowed(const QString& key, Rows rows)
{
    const auto* setting = SettingCatalog::find(key, rows);
    return setting && setting->assistant != AssistantAccess::none ? setting : nullptr;
}

std::optional<QString> SettingsWriteLogic::validate(
    const QString& key, const JSONValue& value, const AppSettings& current, Rows rows)
{
    auto changed = current;
    const auto outcome = apply(key, value, changed, rows);
    return outcome ? std::nullopt : std::optional(outcome.error().reason);
}

bool SettingsWriteLogic::isInEffect(
    const QString& key, const JSONValue& value, const AppSettings& settings, Rows rows)
{
    const auto* setting = allowed(key, rows);
    auto changed = settings;
    // Compared as texts, since each write gives the entries of a list new ids.
    return setting && write(*setting, value, changed)
        && SettingTexts::value(*setting, changed) == SettingTexts::value(*setting, settings);
}

tl::expected<QString, SettingsWriteError> SettingsWriteLogic::apply(
    const QString& key, const JSONValue& value, AppSettings& settings, Rows rows)
{
    if (const auto* setting = allowed(key, rows))
        return write(*setting, value, settings);
    return tl::unexpected(SettingsWriteError {
        QStringLiteral("'%1' is not a setting the assistant may change").arg(key) });
}

tl::expected<QString, SettingsWriteError> SettingsWriteLogic::write(
    const Setting& setting, const JSONValue& value, AppSettings& settings)
{
    if (!std::visit(Writer(value, settings), setting.kind))
        return tl::unexpected(SettingsWriteError { refusal(setting, settings) });
    if (setting.followUp)
        setting.followUp(settings);
    const auto subject = setting.subject.isEmpty() ? setting.key : setting.subject;
    return QStringLiteral("%1 → %2").arg(subject, shortValue(setting, settings));
}

} // namespace pobblewig
