#pragma once

#include "PobblewigDesktop/pages/FormPage.h"
#include "PobblewigDesktop/pages/SettingsEditor.h"

namespace pobblewig {

class SettingControl;

/// A page of settings, in the order of the catalog. Pages with more on them derive from it.
class CatalogPage : public FormPage {
    Q_OBJECT

public:
    using Settings = std::vector<const Setting*>;

    /// `coordinator` must outlive the page.
    CatalogPage(const QString& title, const Settings& settings, AppCoordinator& coordinator);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

    /// A setting is revealed by its key.
    void reveal(const QString& key) override;

protected:
    /// Without settings yet.
    CatalogPage(const QString& title, AppCoordinator& coordinator);

    void addSettings(const Settings& settings);

    /// The settings with these keys, in this order.
    static Settings settings(std::initializer_list<QStringView> keys);

    SettingsEditor& editor() { return m_editor; }

private:
    struct Row {
        const Setting* setting;
        SettingControl* control;
        FieldRow* row;
    };

    void addSetting(const Setting& setting);

    SettingsEditor m_editor;
    std::vector<Row> m_rows;
};

} // namespace pobblewig
