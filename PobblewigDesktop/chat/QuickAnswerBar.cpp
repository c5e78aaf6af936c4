#include "PobblewigDesktop/chat/QuickAnswerBar.h"

#include <QGridLayout>
#include <QPushButton>

#include <numeric>

namespace pobblewig {

namespace {

constexpr int gap = 8;
/// Where one row is too long.
constexpr int columnsIfNarrow = 2;

} // namespace

QuickAnswerBar::QuickAnswerBar(QWidget* parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setSpacing(gap);
    hide();
}

void QuickAnswerBar::setQuestion(const std::optional<QuickQuestion>& question)
{
    if (question == m_question)
        return;
    const auto hadFocus = isAncestorOf(focusWidget());
    m_question = question;
    for (auto* const button : std::exchange(m_buttons, {})) {
        button->hide();
        button->deleteLater();
    }
    if (question)
        addButtons(*question);
    arrange();
    setVisible(question.has_value());
    if (hadFocus)
        parentWidget()->setFocus(Qt::OtherFocusReason);
}

void QuickAnswerBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void QuickAnswerBar::addButtons(const QuickQuestion& question)
{
    for (const auto answer : question.answers) {
        auto* const button = new QPushButton(QuickAnswerLogic::inWords(answer), this);
        button->setAccessibleName(button->text());
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QPushButton::clicked, this,
            [this, record = question.record, answer] { Q_EMIT answered(record, answer); });
        m_buttons.push_back(button);
    }
}

void QuickAnswerBar::arrange()
{
    const auto columns = this->columns();
    for (size_t number = 0; number < m_buttons.size(); ++number)
        m_grid->addWidget(m_buttons[number], int(number) / columns, int(number) % columns);
}

int QuickAnswerBar::columns() const
{
    const auto wanted = std::accumulate(m_buttons.begin(), m_buttons.end(), -gap,
        [](int sum, const QPushButton* button) { return sum + button->sizeHint().width() + gap; });
    return wanted <= width() ? std::max(1, int(m_buttons.size())) : columnsIfNarrow;
}

} // namespace pobblewig
