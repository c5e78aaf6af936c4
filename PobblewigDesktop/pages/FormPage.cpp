#include "PobblewigDesktop/pages/FormPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace pobblewig {

namespace {

constexpr int margin = 16;
constexpr int widest = 560;

} // namespace

FormPage::FormPage(const QString& title)
    : m_column(new QVBoxLayout)
{
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, margin, 0);
    all->addLayout(m_column);
    all->addStretch(1);
    setMaximumWidth(widest);
    m_column->setSpacing(0);
    auto* const heading = new QLabel(title, this);
    PanelStyle::setRole(*heading, QStringLiteral("title"));
    m_column->addWidget(heading);
    addGap();
}

void FormPage::add(QWidget& widget)
{
    m_column->addWidget(&widget);
}

void FormPage::addGap()
{
    m_column->addSpacing(margin / 2);
}

void FormPage::addHeading(const QString& text)
{
    auto* const heading = new QLabel(text, this);
    PanelStyle::setRole(*heading, QStringLiteral("heading"));
    m_column->addSpacing(margin);
    m_column->addWidget(heading);
}

void FormPage::addExplanation(const QString& text)
{
    auto* const words = new WrappedLabel(text, this);
    PanelStyle::setRole(*words, QStringLiteral("detail"));
    m_column->addSpacing(margin / 4);
    m_column->addWidget(words);
}

void FormPage::addText(const QString& text)
{
    m_column->addSpacing(margin / 2);
    m_column->addWidget(new WrappedLabel(text, this));
}

void FormPage::scrollTo(QWidget& part)
{
    layout()->activate();
    auto* const viewport = parentWidget();
    if (auto* const area =
            viewport ? qobject_cast<QScrollArea*>(viewport->parentWidget()) : nullptr)
        area->ensureWidgetVisible(&part);
}

} // namespace pobblewig
