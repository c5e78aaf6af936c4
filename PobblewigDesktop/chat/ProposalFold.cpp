#include "PobblewigDesktop/chat/ProposalFold.h"

#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace pobblewig {

namespace {

constexpr int margin = 12;
constexpr int gap = 8;

void name(QPushButton& button, const QString& text)
{
    button.setText(text);
    button.setAccessibleName(text);
}

} // namespace

ProposalFold::ProposalFold(QWidget* parent)
    : QGroupBox(parent)
    , m_label(new QLabel(this))
    , m_toggle(add({}))
    , m_dismissAll(add(QStringLiteral("quiet")))
{
    setObjectName(QStringLiteral("proposal"));
    name(*m_dismissAll, tr("Dismiss all"));
    m_dismissAll->installEventFilter(this);
    connect(m_toggle, &QPushButton::clicked, this, &ProposalFold::toggled);
    connect(m_dismissAll, &QPushButton::clicked, this, &ProposalFold::dismissAllRequested);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(margin, gap / 2, gap / 2, gap / 2);
    line->setSpacing(gap / 2);
    line->addWidget(m_label, 1);
    line->addWidget(m_toggle);
    line->addWidget(m_dismissAll);
    setFolded(true);
    hide();
}

void ProposalFold::setCount(int count)
{
    const auto isMore = count > std::exchange(m_count, count);
    setVisible(count > 1);
    setAccessibleName(tr("%n things wait for you", nullptr, count));
    fitLabel();
    if (isMore && count > 1)
        announce();
}

void ProposalFold::setFolded(bool isFolded)
{
    name(*m_toggle, isFolded ? tr("Show") : tr("Hide"));
}

QWidget* ProposalFold::lastControl() const
{
    return m_dismissAll;
}

bool ProposalFold::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QGroupBox::eventFilter(watched, event);
    const auto key = static_cast<QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

void ProposalFold::resizeEvent(QResizeEvent* event)
{
    QGroupBox::resizeEvent(event);
    fitLabel();
}

QPushButton* ProposalFold::add(const QString& role)
{
    auto* const button = new QPushButton(this);
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::TabFocus);
    PanelStyle::setRole(*button, role);
    return button;
}

void ProposalFold::announce()
{
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void ProposalFold::fitLabel()
{
    const auto room = width() - m_toggle->sizeHint().width() - m_dismissAll->sizeHint().width()
        - margin - 2 * gap;
    const auto isShort = m_label->fontMetrics().horizontalAdvance(accessibleName()) > room;
    PanelStyle::setText(*m_label, isShort ? tr("%n waiting", nullptr, m_count) : accessibleName());
}

} // namespace pobblewig
