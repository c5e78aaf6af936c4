#include "PobblewigDesktop/settings/SettingsEditor.h"

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
    const auto before = m_coordinator.state().of<SettingsState>().settings;
    auto after = before;
    if (!SettingsWriteLogic::write(setting, value, after))
        return SettingTexts::refusal(setting);
    if (after == before)
        return std::nullopt;
    apply(after);
    if (hurts(setting))
        offerUndo(tr("%1 is now: %2")
                      .arg(SettingTexts::label(setting), SettingTexts::value(setting, after)),
            before, after);
    return std::nullopt;
}

void SettingsEditor::change(const QString& done, const std::function<void(AppSettings&)>& change)
{
    const auto before = m_coordinator.state().of<SettingsState>().settings;
    auto after = before;
    change(after);
    if (after == before)
        return;
    apply(after);
    offerUndo(done, before, after);
}

void SettingsEditor::apply(const AppSettings& after)
{
    m_coordinator.updateSettings([&](AppSettings& settings) { settings = after; });
}

void SettingsEditor::offerUndo(
    const QString& done, const AppSettings& before, const AppSettings& after)
{
    const auto replaced = SettingsDifference::replaced(before, after);
    Q_EMIT undoOffered(done, [coordinator = &m_coordinator, replaced] {
        coordinator->updateSettings([&](AppSettings& settings) {
            settings = SettingsDifference::restored(settings, replaced);
        });
    });
}

} // namespace pobblewig
