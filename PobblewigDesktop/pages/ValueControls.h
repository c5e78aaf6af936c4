#pragma once

#include "PobblewigDesktop/pages/SettingControl.h"

class QLabel;
class QSlider;
class QSpinBox;

namespace pobblewig {

class Switch;

class SwitchControl : public SettingControl {
public:
    explicit SwitchControl(const SwitchSetting& kind);

    void show(const AppSettings& settings) override;
    void setTheme(const Palette& palette) override;
    QWidget& field() override;

private:
    SwitchSetting m_kind;
    Switch* m_switch;
};

class NumberControl : public SettingControl {
public:
    explicit NumberControl(const NumberSetting& kind);

    void show(const AppSettings& settings) override;
    QWidget& field() override;

private:
    NumberSetting m_kind;
    QSpinBox* m_number;
};

class PercentControl : public SettingControl {
public:
    explicit PercentControl(const PercentSetting& kind);

    void show(const AppSettings& settings) override;
    QWidget& field() override;

private:
    PercentSetting m_kind;
    QSlider* m_slider;
    QLabel* m_value;
};

} // namespace pobblewig
