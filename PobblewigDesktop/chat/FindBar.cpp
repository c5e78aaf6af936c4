#include "PobblewigDesktop/chat/FindBar.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Mirroring.h"
#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace pobblewig {

namespace {

QToolButton* findButton(const QString& name, QWidget* parent)
{
    auto* const button = new QToolButton(parent);
    button->setAccessibleName(name);
    button->setToolTip(name);
    return button;
}

} // namespace

FindBar::FindBar(QWidget* parent)
    : QFrame(parent)
    , m_field(new QLineEdit(this))
    , m_count(new QLabel(this))
    , m_previous(findButton(tr("Previous match"), this))
    , m_next(findButton(tr("Next match"), this))
    , m_close(findButton(tr("Close find bar"), this))
{
    setObjectName(QStringLiteral("findBar"));
    m_field->setAccessibleName(tr("Find"));
    m_symbol = m_field->addAction(QIcon(), QLineEdit::LeadingPosition);
    m_count->setAccessibleName(tr("Matches"));
    PanelStyle::setRole(*m_count, QStringLiteral("caption"));

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(mirrored({ 8, 4, 4, 4 }, *this));
    row->setSpacing(4);
    row->addWidget(m_field, 1);
    row->addWidget(m_count);
    row->addWidget(m_previous);
    row->addWidget(m_next);
    row->addWidget(m_close);
    hide();

    connect(m_field, &QLineEdit::textChanged, this, &FindBar::wantedChanged);
    connect(m_previous, &QToolButton::clicked, this, [this] { Q_EMIT stepRequested(-1); });
    connect(m_next, &QToolButton::clicked, this, [this] { Q_EMIT stepRequested(1); });
    connect(m_close, &QToolButton::clicked, this, &FindBar::closeRequested);
}

QString FindBar::wanted() const
{
    return isHidden() ? QString() : m_field->text();
}

void FindBar::setTheme(const Palette& palette)
{
    const auto icon = [&palette](Icons::Name name) {
        return Icons::icon(name, palette.text, palette.muted);
    };
    m_symbol->setIcon(icon(Icons::Name::find));
    m_previous->setIcon(icon(Icons::Name::chevronUp));
    m_next->setIcon(icon(Icons::Name::chevronDown));
    m_close->setIcon(icon(Icons::Name::close));
}

void FindBar::open()
{
    auto* const focus = window()->focusWidget();
    if (!isAncestorOf(focus))
        m_before = focus;
    show();
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
    Q_EMIT wantedChanged();
}

void FindBar::returnFocus()
{
    if (m_before)
        m_before->setFocus(Qt::OtherFocusReason);
}

void FindBar::showCount(std::optional<std::size_t> current, std::size_t count)
{
    const auto text = wanted().isEmpty() ? QString()
        : count == 0                     ? tr("No matches")
                                         : tr("%1 of %2").arg(current.value_or(0) + 1).arg(count);
    PanelStyle::setText(*m_count, text);
    m_previous->setEnabled(count > 0);
    m_next->setEnabled(count > 0);
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    const auto isStep = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter
        || event->key() == Qt::Key_F3;
    if (isStep)
        Q_EMIT stepRequested(event->modifiers() & Qt::ShiftModifier ? -1 : 1);
    else
        QFrame::keyPressEvent(event);
}

} // namespace pobblewig
