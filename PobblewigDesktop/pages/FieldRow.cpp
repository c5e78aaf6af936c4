#include "PobblewigDesktop/pages/FieldRow.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QHBoxLayout>
#include <QLabel>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int gap = 8;
constexpr int lineGap = 2;
constexpr int leastNameWidth = 96;

WrappedLabel* label(const QString& text, const QString& role)
{
    auto* const label = new WrappedLabel(text);
    PanelStyle::setRole(*label, role);
    label->setHidden(text.isEmpty());
    return label;
}

/// It breaks where the control needs the room.
WrappedLabel* nameLabel(const QString& text)
{
    auto* const label = new WrappedLabel(text);
    auto policy = label->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);
    label->setSizePolicy(policy);
    label->setMinimumWidth(std::min(leastNameWidth, label->fontMetrics().horizontalAdvance(text)));
    return label;
}

} // namespace

FieldRow::FieldRow(const Words& words, QWidget& control, QWidget& field, Place place)
    : m_field(field)
    , m_explanation(label(words.explanation, QStringLiteral("detail")))
    , m_problem(label({}, QStringLiteral("problem")))
{
    field.setAccessibleName(words.name);
    field.setAccessibleDescription(words.explanation);
    auto* const name = nameLabel(words.name);
    name->setBuddy(&field);
    auto* const top = new QHBoxLayout;
    top->setSpacing(gap);
    top->addWidget(name, 1, Qt::AlignVCenter);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, gap, 0, gap);
    column->setSpacing(lineGap);
    column->addLayout(top);
    column->addWidget(m_explanation);
    if (place == Place::below) {
        column->addSpacing(gap / 2);
        column->addWidget(&control);
    } else {
        top->addWidget(&control);
    }
    column->addWidget(m_problem);
}

void FieldRow::focusField()
{
    m_field.setFocus(Qt::OtherFocusReason);
}

void FieldRow::setExplanation(const QString& text)
{
    m_field.setAccessibleDescription(text);
    m_explanation->setText(text);
    m_explanation->setHidden(text.isEmpty());
}

void FieldRow::setProblem(const QString& problem)
{
    m_problem->setText(problem);
    m_problem->setHidden(problem.isEmpty());
}

} // namespace pobblewig
