#include "PobblewigDesktop/chat/ProposalBanner.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr int margin = 12;
constexpr int gap = 8;
constexpr int lineGap = 2;
/// Until the user wants to read on.
constexpr int mostLinesOfTheFirst = 4;
constexpr int mostLinesOfOthers = 2;
/// However little room there is.
constexpr int leastLines = 2;

} // namespace

ProposalBanner::ProposalBanner(const BannerQuestion& question, QWidget* parent)
    : QGroupBox(parent)
    , m_id(question.id)
    , m_title(new QLabel(this))
    , m_expander(new QToolButton(this))
    , m_column(new QVBoxLayout)
    , m_answerRow(new QHBoxLayout)
{
    setObjectName(QStringLiteral("proposal"));
    setAccessibleName(question.name);
    m_title->setTextFormat(Qt::PlainText);
    PanelStyle::setRole(*m_title, QStringLiteral("caption"));
    m_expander->setObjectName(QStringLiteral("expander"));
    m_expander->setFocusPolicy(Qt::TabFocus);
    connect(m_expander, &QToolButton::clicked, this, &ProposalBanner::toggle);
    addAnswers(question);
    arrange();
}

std::vector<QWidget*> ProposalBanner::controls() const
{
    std::vector<QWidget*> controls { m_expander };
    controls.insert(controls.end(), m_answers.begin(), m_answers.end());
    return controls;
}

void ProposalBanner::setTheme(const Palette& palette)
{
    m_more = Icons::icon(Icons::Name::chevronDown, palette.text, palette.muted);
    m_less = Icons::icon(Icons::Name::chevronUp, palette.text, palette.muted);
    showLines();
}

void ProposalBanner::setWords(const ProposalWords& words)
{
    m_words = words;
    setAccessibleDescription(words.lines.join(u'\n'));
    m_title->setText(words.title);
    qDeleteAll(std::exchange(m_lines, {}));
    for (const auto& text : words.lines) {
        auto* const line = new WrappedLabel(text, this);
        if (!m_lines.empty())
            PanelStyle::setRole(*line, QStringLiteral("detail"));
        connect(line, &WrappedLabel::wrapped, this, &ProposalBanner::limitLines);
        m_column->addWidget(line);
        m_lines.push_back(line);
    }
    showLines();
}

void ProposalBanner::setRoom(int height)
{
    m_room = height;
    limitLines();
}

void ProposalBanner::setAnswerable(bool isAnswerable)
{
    for (auto* const answer : m_answers)
        answer->setEnabled(isAnswerable);
}

void ProposalBanner::giveUpFocus()
{
    auto* const focused = window()->focusWidget();
    if (!focused || !isAncestorOf(focused))
        return;
    focused->clearFocus();
    Q_EMIT focusGivenUp();
}

bool ProposalBanner::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QGroupBox::eventFilter(watched, event);
    // On some desktops Enter presses the button that has the focus.
    const auto key = static_cast<QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

void ProposalBanner::resizeEvent(QResizeEvent* event)
{
    QGroupBox::resizeEvent(event);
    auto needed = 2 * margin;
    for (const auto* const answer : m_answers)
        needed += answer->sizeHint().width() + gap;
    m_answerRow->setDirection(needed > width() ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void ProposalBanner::showEvent(QShowEvent* event)
{
    QGroupBox::showEvent(event);
    if (std::exchange(m_isAnnounced, true))
        return;
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void ProposalBanner::addAnswers(const BannerQuestion& question)
{
    auto* const usual = new QHBoxLayout;
    usual->setSpacing(gap);
    usual->addWidget(answer(question.confirm, QStringLiteral("primary"), ProposalAnswer::confirm));
    usual->addWidget(answer(question.dismiss, QString(), ProposalAnswer::dismiss));
    usual->addStretch();
    m_answerRow->setSpacing(gap);
    m_answerRow->addLayout(usual, 1);
    if (!question.allowAlways.isEmpty())
        m_answerRow->addWidget(
            answer(question.allowAlways, QStringLiteral("quiet"), ProposalAnswer::allowAlways), 0,
            Qt::AlignLeft);
}

QPushButton* ProposalBanner::answer(const QString& name, const QString& role, ProposalAnswer answer)
{
    auto* const button = new QPushButton(name, this);
    button->setAccessibleName(name);
    button->setAccessibleDescription(accessibleName());
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::TabFocus);
    button->installEventFilter(this);
    PanelStyle::setRole(*button, role);
    connect(button, &QPushButton::clicked, this, [this, answer] {
        giveUpFocus();
        setAnswerable(false);
        Q_EMIT answered(m_id, answer);
    });
    m_answers.push_back(button);
    return button;
}

void ProposalBanner::arrange()
{
    auto keepsItsRoom = m_expander->sizePolicy();
    keepsItsRoom.setRetainSizeWhenHidden(true);
    m_expander->setSizePolicy(keepsItsRoom);
    auto* const top = new QHBoxLayout;
    top->addWidget(m_title, 1);
    top->addWidget(m_expander);
    m_column->setSpacing(lineGap);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(margin, gap / 2, margin, margin);
    all->setSpacing(gap);
    auto* const text = new QVBoxLayout;
    text->setSpacing(0);
    text->addLayout(top);
    text->addLayout(m_column);
    all->addLayout(text);
    all->addLayout(m_answerRow);
}

void ProposalBanner::toggle()
{
    m_isExpanded = !m_isExpanded;
    showLines();
}

void ProposalBanner::showLines()
{
    const auto name = m_isExpanded ? tr("Show less") : tr("Show all");
    m_expander->setAccessibleName(name);
    m_expander->setToolTip(name);
    m_expander->setIcon(m_isExpanded ? m_less : m_more);
    limitLines();
}

int ProposalBanner::linesInRoom() const
{
    const auto around =
        gap / 2 + m_expander->sizeHint().height() + gap + m_answers.front()->sizeHint().height();
    return std::max(leastLines, (m_room - around) / (fontMetrics().height() + lineGap));
}

void ProposalBanner::limitLines()
{
    const auto isInFull = m_isExpanded || m_words.isInFull;
    auto left = linesInRoom();
    auto isLong = false;
    for (auto* const line : m_lines) {
        const auto isFirst = line == m_lines.front();
        // Something of the second is in sight as well.
        const auto free = isFirst && m_lines.size() > 1 ? left - 1 : left;
        const auto most = std::min(isFirst ? mostLinesOfTheFirst : mostLinesOfOthers, free);
        isLong |= line->lineCount() > most;
        line->setVisible(isInFull || most > 0);
        line->setMostLines(isInFull ? WrappedLabel::unlimited : std::max(1, most));
        left -= std::min(most, line->lineCount());
    }
    m_expander->setVisible(isLong && !m_words.isInFull);
}

} // namespace pobblewig
