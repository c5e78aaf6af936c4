#include "PobblewigDesktop/pages/SettingsEditor.h"

#include "settings/SettingTexts.h"
#include "settings/SettingsDifference.h"
#include "settings/SettingsWriteLogic.h"

namespace pobblewig {

namespace {

/// What guards the user's data is taken back more easily than the rest.
bool hurts(const Setting& setting)
{
    return setting.alwaysAsks != AlwaysAsks::none || setting.page == SettingsPage::memoryAndPrivacy;
}

} // namespace

SettingsEditor::SettingsEditor(AppCoordinator& coordinator, QObject* parent)
    : QObject(parent)
    , m_coordinator(coordinator)
{
}

std::optional<QString> SettingsEditor::write(const Setting& setting, const JSONValue& value)
{
    auto tried = m_coordinator.state().of<SettingsState>().settings;
    if (!SettingsWriteLogic::write(setting, value, tried))
        return SettingTexts::refusal(setting);
    const auto [before, after] = apply([&](AppSettings& settings) {
        std::ignore = SettingsWriteLogic::write(setting, value, settings);
    });
    if (hurts(setting))
        offerUndo(tr("%1 is now: %2")
                      .arg(SettingTexts::label(setting), SettingTexts::value(setting, after)),
            before, after);
    return std::nullopt;
}

void SettingsEditor::change(const QString& done, const std::function<void(AppSettings&)>& change)
{
    const auto [before, after] = apply(change);
    offerUndo(done, before, after);
}

std::pair<AppSettings, AppSettings> SettingsEditor::apply(
    const std::function<void(AppSettings&)>& change)
{
    std::pair<AppSettings, AppSettings> both;
    m_coordinator.updateSettings([&](AppSettings& settings) {
        both.first = settings;
        change(settings);
        both.second = settings;
    });
    return both;
}

void SettingsEditor::offerUndo(
    const QString& done, const AppSettings& before, const AppSettings& after)
{
    if (after == before)
        return;
    const auto replaced = SettingsDifference::replaced(before, after);
    Q_EMIT undoOffered(done, [coordinator = &m_coordinator, replaced] {
        coordinator->updateSettings([&](AppSettings& settings) {
            settings = SettingsDifference::restored(settings, replaced);
        });
    });
}

} // namespace pobblewig
