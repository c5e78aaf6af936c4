#include "PobblewigDesktop/controls/Banner.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

namespace pobblewig {

namespace {

constexpr int slideMilliseconds = 140;
constexpr int mostLines = 6;

} // namespace

Banner::Banner(Kind kind, const QString& name, const QString& action, QWidget* parent)
    : QFrame(parent)
    , m_label(new WrappedLabel({}, this))
    , m_action(new QPushButton(action, this))
    , m_close(new QToolButton(this))
    , m_slide(this, "maximumHeight")
{
    setObjectName(QStringLiteral("banner"));
    if (kind == Kind::error)
        PanelStyle::setRole(*this, QStringLiteral("danger"));
    m_label->setAccessibleName(name);
    m_label->setMostLines(mostLines);
    offerCopy();
    m_action->setAccessibleName(action);
    m_action->setVisible(!action.isEmpty());
    m_close->setAccessibleName(tr("Close"));
    m_close->setToolTip(tr("Close"));

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(12, 8, 8, 8);
    row->setSpacing(8);
    row->addWidget(m_label, 1, Qt::AlignVCenter);
    row->addWidget(m_action, 0, Qt::AlignTop);
    row->addWidget(m_close, 0, Qt::AlignTop);
    hide();

    m_slide.setDuration(slideMilliseconds);
    m_slide.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_slide, &QPropertyAnimation::finished, this,
        [this] { setMaximumHeight(QWIDGETSIZE_MAX); });
    connect(m_action, &QPushButton::clicked, this, &Banner::actionTriggered);
    connect(m_close, &QToolButton::clicked, this, [this] { setText({}); });
}

void Banner::setTheme(const Palette& palette)
{
    m_close->setIcon(Icons::icon(Icons::Name::close, palette.text, palette.muted));
    m_action->setIcon(Icons::icon(m_actionIcon, palette.text, palette.muted));
    m_palette = palette;
}

void Banner::setText(const QString& text)
{
    if (text == m_label->text())
        return;
    PanelStyle::setText(*m_label, text);
    if (text.isEmpty()) {
        m_slide.stop();
        hide();
        return;
    }
    if (isHidden())
        slideIn();
    QAccessibleEvent alert(m_label, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void Banner::setAction(const QString& text, Icons::Name icon)
{
    m_actionIcon = icon;
    m_action->setIcon(Icons::icon(icon, m_palette.text, m_palette.muted));
    m_action->setText(text);
    m_action->setAccessibleName(text);
    m_action->setVisible(!text.isEmpty());
}

void Banner::setActionEnabled(bool isEnabled)
{
    m_action->setEnabled(isEnabled);
}

void Banner::offerCopy()
{
    auto* const copy = new QAction(tr("Copy"), this);
    connect(copy, &QAction::triggered, this,
        [this] { QGuiApplication::clipboard()->setText(m_label->text()); });
    addAction(copy);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void Banner::slideIn()
{
    show();
    if (PanelStyle::isStill(*this) || !isVisible())
        return;
    m_slide.setStartValue(0);
    m_slide.setEndValue(sizeHint().height());
    m_slide.start();
}

} // namespace pobblewig
