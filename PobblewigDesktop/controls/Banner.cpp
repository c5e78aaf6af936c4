#include "PobblewigDesktop/controls/Banner.h"

#include "PobblewigDesktop/controls/Mirroring.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>

namespace pobblewig {

namespace {

constexpr int slideMilliseconds = 140;
constexpr int mostLines = 6;
constexpr int mostLinesInLowWindow = 3;
constexpr int fewestDetailLines = 2;
constexpr int mostDetailLines = 5;
constexpr int longestChoice = 60;
constexpr int lowWindow = 440;
constexpr int gap = 8;

void copy(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

QPushButton* quietButton(const QString& name, QWidget* parent)
{
    auto* const button = new QPushButton(name, parent);
    button->setAccessibleName(name);
    PanelStyle::setRole(*button, QStringLiteral("quiet"));
    button->hide();
    return button;
}

/// As an entry of a menu, where "&" marks a key.
QString entry(const QString& choice)
{
    const auto isLong = choice.size() > longestChoice;
    auto shown = isLong ? choice.first(longestChoice) + u'…' : choice;
    return shown.replace(u'&', QStringLiteral("&&"));
}

} // namespace

Banner::Banner(Kind kind, const QString& name, const QString& action, QWidget* parent)
    : QFrame(parent)
    , m_label(new WrappedLabel({}, this))
    , m_advice(new WrappedLabel({}, this))
    , m_action(new QPushButton(action, this))
    , m_more(quietButton(tr("Details"), this))
    , m_details(new QPlainTextEdit(this))
    , m_copy(quietButton(tr("Copy"), this))
    , m_buttons(new QHBoxLayout)
    , m_close(new QToolButton(this))
    , m_slide(this, "maximumHeight")
{
    setObjectName(QStringLiteral("banner"));
    if (kind == Kind::error)
        PanelStyle::setRole(*this, QStringLiteral("danger"));
    m_label->setAccessibleName(name);
    m_label->setMostLines(mostLines);
    m_advice->setAccessibleName(tr("Advice"));
    m_advice->setMostLines(mostLines);
    m_advice->hide();
    PanelStyle::setRole(*m_advice, QStringLiteral("advice"));
    offerCopy();
    m_action->setAccessibleName(action);
    m_action->setVisible(!action.isEmpty());
    m_close->setAccessibleName(tr("Close"));
    m_close->setToolTip(tr("Close"));
    arrangeDetails();
    arrange(kind);
    connectControls();
    hide();
}

void Banner::arrange(Kind kind)
{
    auto* const top = new QHBoxLayout;
    top->setSpacing(gap);
    top->addWidget(m_label, 1, Qt::AlignVCenter);
    if (kind == Kind::notice)
        top->addWidget(m_action, 0, Qt::AlignTop);
    top->addWidget(m_close, 0, Qt::AlignTop);

    m_buttons->setSpacing(gap);
    m_buttons->addWidget(m_more);
    m_buttons->addWidget(m_copy);
    m_buttons->addStretch(1);
    if (kind == Kind::error)
        m_buttons->addWidget(m_action);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(mirrored({ 12, 8, 8, 8 }, *this));
    column->setSpacing(gap / 2);
    column->addLayout(top);
    column->addWidget(m_advice);
    column->addWidget(m_details);
    column->addLayout(m_buttons);
}

void Banner::arrangeDetails()
{
    m_details->setReadOnly(true);
    m_details->setAccessibleName(tr("Details"));
    m_details->setTabChangesFocus(true);
    m_details->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const auto line = m_details->fontMetrics().lineSpacing();
    m_details->setMinimumHeight(fewestDetailLines * line + gap);
    m_details->setMaximumHeight(mostDetailLines * line + 2 * gap);
    m_details->hide();
}

void Banner::connectControls()
{
    m_slide.setDuration(slideMilliseconds);
    m_slide.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_slide, &QPropertyAnimation::finished, this,
        [this] { setMaximumHeight(QWIDGETSIZE_MAX); });
    connect(m_action, &QPushButton::clicked, this, &Banner::actionTriggered);
    connect(m_close, &QToolButton::clicked, this, [this] { setText({}); });
    connect(m_more, &QPushButton::clicked, this, [this] { showDetails(m_details->isHidden()); });
    connect(m_copy, &QPushButton::clicked, this, [this] { copy(m_details->toPlainText()); });
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

void Banner::setAdvice(const QString& text)
{
    if (text == m_advice->text())
        return;
    PanelStyle::setText(*m_advice, text);
    showAdvice();
}

void Banner::setAction(const QString& text, Icons::Name icon)
{
    m_actionIcon = icon;
    m_action->setIcon(Icons::icon(icon, m_palette.text, m_palette.muted));
    m_action->setText(text);
    m_action->setAccessibleName(text);
    m_action->setVisible(!text.isEmpty());
    fitButtons();
}

void Banner::setActionEnabled(bool isEnabled)
{
    m_action->setEnabled(isEnabled);
}

void Banner::setChoices(const std::vector<QString>& choices)
{
    delete m_action->menu();
    if (choices.empty())
        return;
    auto* const menu = new QMenu(m_action);
    for (const auto& choice : choices)
        menu->addAction(entry(choice), this, [this, choice] { Q_EMIT chosen(choice); });
    m_action->setMenu(menu);
}

void Banner::setDetails(const QString& text)
{
    if (text == m_details->toPlainText())
        return;
    m_details->setPlainText(text);
    m_more->setVisible(!text.isEmpty());
    showDetails(false);
}

void Banner::showDetails(bool areShown)
{
    m_details->setVisible(areShown);
    m_copy->setVisible(areShown);
    showAdvice();
    m_more->setText(areShown ? tr("Hide details") : tr("Details"));
    m_more->setAccessibleName(m_more->text());
    fitButtons();
}

void Banner::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    showAdvice();
    fitButtons();
}

void Banner::showAdvice()
{
    // In a low window, the details take its place.
    const auto isLow = window()->height() < lowWindow;
    const auto hasRoom = m_details->isHidden() || !isLow;
    m_advice->setMostLines(isLow ? mostLinesInLowWindow : mostLines);
    m_advice->setVisible(hasRoom && !m_advice->text().isEmpty());
}

void Banner::fitButtons()
{
    // Side by side as long as every word can be read.
    auto needed = layout()->contentsMargins().left() + layout()->contentsMargins().right();
    for (const auto* const button : { m_more, m_copy, m_action })
        needed += button->isHidden() ? 0 : button->sizeHint().width() + gap;
    m_buttons->setDirection(needed > width() ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void Banner::offerCopy()
{
    auto* const action = new QAction(tr("Copy"), this);
    connect(action, &QAction::triggered, this, [this] { copy(m_label->text()); });
    addAction(action);
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
