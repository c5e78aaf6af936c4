#pragma once

#include "PobblewigDesktop/pages/SettingControl.h"

class QCheckBox;
class QComboBox;
class QVBoxLayout;

namespace pobblewig {

class ChoiceControl : public SettingControl {
public:
    explicit ChoiceControl(const ChoiceSetting& kind);

    void show(const AppSettings& settings) override;
    QWidget& field() override;

private:
    ChoiceSetting m_kind;
    QComboBox* m_options;
};

class ChoicesControl : public SettingControl {
public:
    explicit ChoicesControl(const ChoicesSetting& kind);

    void show(const AppSettings& settings) override;
    QWidget& field() override;
    bool isWide() const override { return true; }

private:
    void showOptions(const AppSettings& settings);
    void choose();

    ChoicesSetting m_kind;
    QVBoxLayout* m_column;
    std::vector<std::pair<QString, QCheckBox*>> m_options;
};

} // namespace pobblewig
