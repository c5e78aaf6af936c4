#include "PobblewigDesktop/chat/ComposerBar.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Mirroring.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/SteadyLabel.h"
#include "foundation/Text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace pobblewig {

namespace {

/// More than a line ever has.
constexpr qsizetype mostCharacters = 300;

} // namespace

ComposerBar::ComposerBar(const Words& words, QWidget* parent)
    : QFrame(parent)
    , m_label(new SteadyLabel(this))
    , m_end(new QPushButton(words.action, this))
{
    setObjectName(QStringLiteral("banner"));
    m_label->label().setAccessibleName(words.name);
    m_end->setAccessibleName(words.actionName);
    m_end->setToolTip(words.actionName);
    PanelStyle::setRole(*m_end, QStringLiteral("quiet"));
    connect(m_end, &QPushButton::clicked, this, &ComposerBar::ended);

    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(mirrored({ 12, 2, 4, 2 }, *this));
    line->setSpacing(8);
    line->addWidget(m_label, 1);
    line->addWidget(m_end);
    hide();
}

void ComposerBar::setTheme(const Palette& palette)
{
    if (m_end->text().isEmpty())
        m_end->setIcon(Icons::icon(Icons::Name::close, palette.muted, palette.muted));
}

void ComposerBar::setText(const QString& text)
{
    m_label->setText(Text::plainLine(text, mostCharacters));
    setVisible(!text.isEmpty());
}

} // namespace pobblewig
