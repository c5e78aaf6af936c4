#include "PobblewigDesktop/pages/ValueControls.h"

#include "PobblewigDesktop/controls/Switch.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

namespace pobblewig {

namespace {

constexpr int sliderWidth = 180;
constexpr int sliderStep = 10;

QHBoxLayout& line(QWidget& widget)
{
    auto* const line = new QHBoxLayout(&widget);
    line->setContentsMargins(0, 0, 0, 0);
    return *line;
}

/// A spin box that says "1 minute" and "15 minutes".
class CountBox : public QSpinBox {
public:
    explicit CountBox(const SettingUnit& unit)
        : m_unit(unit)
    {
    }

protected:
    QString textFromValue(int value) const override
    {
        const auto* const words = value == 1 ? m_unit.one : m_unit.many;
        return QCoreApplication::translate("SettingCatalog", words).arg(locale().toString(value));
    }

    int valueFromText(const QString& text) const override { return number(text).value_or(value()); }

    QValidator::State validate(QString& text, int&) const override
    {
        return number(text) ? QValidator::Acceptable : QValidator::Intermediate;
    }

private:
    std::optional<int> number(const QString& text) const
    {
        QString digits;
        for (const auto character : text) {
            if (character.isDigit())
                digits += QString::number(character.digitValue());
        }
        bool isNumber = false;
        const auto number = digits.toInt(&isNumber);
        return isNumber ? std::optional(number) : std::nullopt;
    }

    const SettingUnit& m_unit;
};

} // namespace

SwitchControl::SwitchControl(const SwitchSetting& kind)
    : m_kind(kind)
    , m_switch(new Switch(this))
{
    line(*this).addWidget(m_switch);
    connect(m_switch, &Switch::switched, this, [this](bool isOn) { Q_EMIT changed(isOn); });
}

void SwitchControl::show(const AppSettings& settings)
{
    m_switch->showOn(settings.*m_kind.field);
}

void SwitchControl::setTheme(const Palette& palette)
{
    m_switch->setTheme(palette);
}

QWidget& SwitchControl::field()
{
    return *m_switch;
}

NumberControl::NumberControl(const NumberSetting& kind)
    : m_kind(kind)
    , m_number(new CountBox(*kind.unit))
{
    m_number->setRange(kind.lowest, kind.highest);
    m_number->setKeyboardTracking(false);
    m_number->setAccelerated(true);
    line(*this).addWidget(m_number);
    connect(m_number, &QSpinBox::valueChanged, this, [this](int value) { Q_EMIT changed(value); });
}

void NumberControl::show(const AppSettings& settings)
{
    const QSignalBlocker quiet(m_number);
    m_number->setValue(settings.*m_kind.field);
}

QWidget& NumberControl::field()
{
    return *m_number;
}

PercentControl::PercentControl(const PercentSetting& kind)
    : m_kind(kind)
    , m_slider(new QSlider(Qt::Horizontal))
    , m_value(new QLabel)
{
    m_slider->setRange(kind.lowest, kind.highest);
    m_slider->setSingleStep(sliderStep);
    m_slider->setPageStep(sliderStep);
    m_slider->setFixedWidth(sliderWidth);
    auto& row = line(*this);
    row.addWidget(m_slider);
    row.addWidget(m_value);
    connect(m_slider, &QSlider::valueChanged, this,
        [this](int percent) { Q_EMIT changed(percent / 100.0); });
}

void PercentControl::show(const AppSettings& settings)
{
    const QSignalBlocker quiet(m_slider);
    const auto percent = qRound(settings.*m_kind.field * 100);
    m_slider->setValue(percent);
    m_value->setText(QStringLiteral("%1%").arg(locale().toString(percent)));
}

QWidget& PercentControl::field()
{
    return *m_slider;
}

} // namespace pobblewig
