#include "PobblewigDesktop/chat/SuggestionBar.h"

#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace pobblewig {

SuggestionBar::SuggestionBar(QWidget* parent)
    : QWidget(parent)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
}

void SuggestionBar::setSuggestions(const std::vector<FirstMinute::Suggestion>& suggestions)
{
    if (suggestions == m_suggestions)
        return;
    m_suggestions = suggestions;
    qDeleteAll(findChildren<QPushButton*>());
    for (const auto& suggestion : m_suggestions) {
        auto* const button = new QPushButton(suggestion.text, this);
        button->setAccessibleName(suggestion.text);
        button->setFocusPolicy(Qt::TabFocus);
        connect(
            button, &QPushButton::clicked, this, [this, suggestion] { Q_EMIT chosen(suggestion); });
        layout()->addWidget(button);
        layout()->setAlignment(button, Qt::AlignLeading);
    }
}

} // namespace pobblewig
