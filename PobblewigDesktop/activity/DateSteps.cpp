#include "PobblewigDesktop/activity/DateSteps.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

namespace pobblewig {

namespace {

constexpr int gap = 8;

QToolButton* button(const QString& name)
{
    auto* const button = new QToolButton;
    button->setAccessibleName(name);
    button->setToolTip(name);
    return button;
}

} // namespace

DateSteps::DateSteps(const Words& words)
    : m_earlier(button(words.earlier))
    , m_name(new QLabel(this))
    , m_later(button(words.later))
    , m_present(new QPushButton(words.present, this))
{
    m_present->setAutoDefault(false);
    PanelStyle::setRole(*m_present, QStringLiteral("quiet"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, gap);
    row->setSpacing(gap);
    row->addWidget(m_earlier);
    row->addWidget(m_later);
    row->addWidget(m_name, 1);
    row->addWidget(m_present);
    connect(m_earlier, &QToolButton::clicked, this, [this] { Q_EMIT stepped(-1); });
    connect(m_later, &QToolButton::clicked, this, [this] { Q_EMIT stepped(1); });
    connect(m_present, &QPushButton::clicked, this, &DateSteps::presentRequested);
}

void DateSteps::setTheme(const Palette& palette)
{
    const auto isMirrored = layoutDirection() == Qt::RightToLeft;
    using enum Icons::Name;
    m_earlier->setIcon(
        Icons::icon(isMirrored ? chevronRight : chevronLeft, palette.text, palette.muted));
    m_later->setIcon(
        Icons::icon(isMirrored ? chevronLeft : chevronRight, palette.text, palette.muted));
}

void DateSteps::setShown(const QString& name, bool isPresent)
{
    PanelStyle::setText(*m_name, name);
    m_later->setDisabled(isPresent);
    m_present->setDisabled(isPresent);
}

} // namespace pobblewig
