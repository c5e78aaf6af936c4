#include "PobblewigDesktop/pages/CatalogPage.h"

#include "PobblewigDesktop/pages/FieldRow.h"
#include "PobblewigDesktop/pages/SettingControl.h"
#include "settings/SettingTexts.h"

#include <algorithm>

namespace pobblewig {

CatalogPage::CatalogPage(
    const QString& title, const Settings& settings, AppCoordinator& coordinator)
    : CatalogPage(title, coordinator)
{
    addSettings(settings);
}

CatalogPage::CatalogPage(const QString& title, AppCoordinator& coordinator)
    : FormPage(title)
    , m_editor(coordinator)
{
    connect(&m_editor, &SettingsEditor::undoOffered, this, &Page::undoOffered);
}

void CatalogPage::showState(const PublishedState& state)
{
    for (const auto& row : m_rows)
        row.control->show(state.of<SettingsState>().settings);
}

void CatalogPage::setTheme(const Palette& palette)
{
    for (const auto& row : m_rows)
        row.control->setTheme(palette);
}

void CatalogPage::reveal(const QString& key)
{
    const auto found =
        std::ranges::find_if(m_rows, [&](const Row& row) { return row.setting->key == key; });
    if (found == m_rows.end())
        return;
    scrollTo(*found->row);
    found->row->focusField();
}

void CatalogPage::addSettings(const Settings& settings)
{
    for (const auto* const setting : settings)
        addSetting(*setting);
}

auto CatalogPage::settings(std::initializer_list<QStringView> keys) -> Settings
{
    Settings settings;
    for (const auto key : keys) {
        if (const auto* const setting = SettingCatalog::find(key.toString()))
            settings.push_back(setting);
    }
    return settings;
}

void CatalogPage::addSetting(const Setting& setting)
{
    using Place = FieldRow::Place;
    auto* const control = SettingControl::make(setting).release();
    auto* const row =
        new FieldRow({ SettingTexts::label(setting), SettingTexts::explanation(setting) }, *control,
            control->field(), control->isWide() ? Place::below : Place::beside);
    connect(control, &SettingControl::changed, this, [this, row, &setting](const auto& value) {
        row->setProblem(m_editor.write(setting, value).value_or(QString()));
    });
    add(*row);
    m_rows.push_back({ &setting, control, row });
}

} // namespace pobblewig
