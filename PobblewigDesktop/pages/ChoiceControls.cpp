#include "PobblewigDesktop/pages/ChoiceControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int leastWidth = 180;

} // namespace

ChoiceControl::ChoiceControl(const ChoiceSetting& kind)
    : m_kind(kind)
    , m_options(new QComboBox(this))
{
    m_options->setMinimumWidth(leastWidth);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_options);
    connect(m_options, &QComboBox::activated, this,
        [this](int row) { Q_EMIT changed(m_options->itemData(row).toString()); });
}

void ChoiceControl::show(const AppSettings& settings)
{
    m_options->clear();
    const auto chosen = m_kind.chosen(settings);
    for (const auto& option : m_kind.options(settings)) {
        m_options->addItem(option.label, option.id);
        m_options->setItemData(m_options->count() - 1, option.note, Qt::ToolTipRole);
        if (option.id == chosen)
            m_options->setCurrentIndex(m_options->count() - 1);
    }
}

QWidget& ChoiceControl::field()
{
    return *m_options;
}

ChoicesControl::ChoicesControl(const ChoicesSetting& kind)
    : m_kind(kind)
    , m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
}

void ChoicesControl::show(const AppSettings& settings)
{
    if (m_options.empty())
        showOptions(settings);
    const auto chosen = m_kind.chosen(settings);
    for (const auto& [id, box] : m_options) {
        const QSignalBlocker quiet(box);
        box->setChecked(chosen.contains(id));
    }
}

QWidget& ChoicesControl::field()
{
    return *this;
}

void ChoicesControl::showOptions(const AppSettings& settings)
{
    for (const auto& option : m_kind.options(settings)) {
        auto* const box = new QCheckBox(option.label, this);
        box->setAccessibleName(option.label);
        box->setAccessibleDescription(option.note);
        box->setToolTip(option.note);
        connect(box, &QCheckBox::toggled, this, &ChoicesControl::choose);
        m_column->addWidget(box);
        m_options.emplace_back(option.id, box);
    }
}

void ChoicesControl::choose()
{
    JSONValue::Array chosen;
    for (const auto& [id, box] : m_options) {
        if (box->isChecked())
            chosen.push_back(id);
    }
    Q_EMIT changed(chosen);
}

} // namespace pobblewig
