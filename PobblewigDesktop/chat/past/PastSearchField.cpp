#include "PobblewigDesktop/chat/past/PastSearchField.h"

#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>

namespace pobblewig {

namespace {

constexpr int gap = 8;
constexpr std::chrono::milliseconds typingPause(150);

} // namespace

PastSearchField::PastSearchField(QWidget* parent)
    : QWidget(parent)
    , m_field(new QLineEdit(this))
    , m_count(new QLabel(this))
{
    m_field->setAccessibleName(tr("Search all conversations"));
    m_field->setClearButtonEnabled(true);
    m_count->setAccessibleName(tr("Matches"));
    setFocusProxy(m_field);
    arrange();
    addKeys();
    m_typing.setSingleShot(true);
    m_typing.setInterval(typingPause);
    connect(&m_typing, &QTimer::timeout, this, &PastSearchField::wantedChanged);
    connect(m_field, &QLineEdit::textChanged, &m_typing, qOverload<>(&QTimer::start));
}

QString PastSearchField::wanted() const
{
    return m_field->text();
}

void PastSearchField::clear()
{
    m_field->clear();
}

void PastSearchField::setCount(const QString& words)
{
    PanelStyle::setText(*m_count, words);
}

void PastSearchField::arrange()
{
    auto* const name = new QLabel(m_field->accessibleName(), this);
    name->setBuddy(m_field);
    PanelStyle::setRole(*name, QStringLiteral("caption"));
    PanelStyle::setRole(*m_count, QStringLiteral("caption"));
    auto* const caption = new QHBoxLayout;
    caption->addWidget(name, 1);
    caption->addWidget(m_count);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addLayout(caption);
    column->addWidget(m_field);
}

void PastSearchField::addKeys()
{
    const auto add = [this](QKeyCombination key, QWidget* place, Qt::ShortcutContext context) {
        auto* const shortcut = new QShortcut(key, place);
        shortcut->setContext(context);
        const auto way = key.keyboardModifiers() & Qt::ShiftModifier ? -1 : 1;
        connect(shortcut, &QShortcut::activated, this, [this, way] { step(way); });
    };
    for (const auto modifier : { Qt::NoModifier, Qt::ShiftModifier }) {
        add(modifier | Qt::Key_F3, this, Qt::WindowShortcut);
        add(modifier | Qt::Key_Return, m_field, Qt::WidgetShortcut);
        add(modifier | Qt::Key_Enter, m_field, Qt::WidgetShortcut);
    }
}

void PastSearchField::step(int step)
{
    if (!m_typing.isActive()) {
        Q_EMIT stepRequested(step);
        return;
    }
    m_typing.stop();
    Q_EMIT wantedChanged();
}

} // namespace pobblewig
