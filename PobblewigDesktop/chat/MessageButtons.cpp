#include "PobblewigDesktop/chat/MessageButtons.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace pobblewig {

namespace {

constexpr int side = 24;
constexpr int gap = 8;

} // namespace

MessageButtons::MessageButtons(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("messageButtons"));
    setCursor(Qt::ArrowCursor);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    const auto [back, on] = isRightToLeft()
        ? std::pair(Icons::Name::chevronRight, Icons::Name::chevronLeft)
        : std::pair(Icons::Name::chevronLeft, Icons::Name::chevronRight);
    m_previous = add(back, tr("Earlier answer"));
    m_next = add(on, tr("Later answer"));
    m_copy = add(Icons::Name::copy, tr("Copy message"));
    m_again = add(Icons::Name::retry, tr("Answer again"));
    m_edit = add(Icons::Name::edit, tr("Edit and send again"));
    connect(m_previous, &QToolButton::clicked, this,
        [this] { Q_EMIT otherAnswerRequested(m_message, -1); });
    connect(
        m_next, &QToolButton::clicked, this, [this] { Q_EMIT otherAnswerRequested(m_message, 1); });
    connect(m_copy, &QToolButton::clicked, this, [this] { Q_EMIT copyRequested(m_message); });
    connect(m_again, &QToolButton::clicked, this, &MessageButtons::answerAgainRequested);
    connect(m_edit, &QToolButton::clicked, this, &MessageButtons::editRequested);
    hide();
}

void MessageButtons::setTheme(const Palette& palette)
{
    for (const auto& [button, icon] : m_all)
        button->setIcon(Icons::icon(icon, palette.muted, palette.hairline));
}

void MessageButtons::showFor(
    const ConversationRow& row, const MessageOffers& offers, const QRect& footer)
{
    m_message = row.id;
    for (auto* const button : { m_previous, m_next })
        button->setVisible(!row.earlier.empty());
    m_previous->setEnabled(row.answer > 0);
    m_next->setEnabled(row.answer < row.earlier.size());
    m_again->setVisible(row.id == offers.repeatable);
    m_edit->setVisible(row.id == offers.changeable);
    adjustSize();
    const auto isAtRight = (row.kind == ConversationRow::Kind::user) != isRightToLeft();
    const auto left = isAtRight ? footer.left() - gap - width() : footer.right() + gap;
    move(left, footer.center().y() - side / 2);
    show();
}

QToolButton* MessageButtons::add(Icons::Name icon, const QString& name)
{
    auto* const button = new QToolButton(this);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setFocusPolicy(Qt::NoFocus);
    button->setIconSize({ 14, 14 });
    button->setFixedSize(side, side);
    layout()->addWidget(button);
    m_all.emplace_back(button, icon);
    return button;
}

} // namespace pobblewig
