#include "PobblewigDesktop/settings/SchoolForm.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/pages/FieldRow.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

namespace pobblewig {

namespace {

constexpr int gap = 8;

QPushButton* button(const QString& text, const QString& name)
{
    auto* const button = new QPushButton(text);
    button->setAccessibleName(name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

SchoolForm::SchoolForm(const Words& words, QWidget* parent)
    : QWidget(parent)
    , m_address(new QLineEdit(this))
    , m_token(new QLineEdit(this))
    , m_connect(button(tr("Connect"), words.connect))
    , m_sync(button(tr("Sync now"), words.sync))
    , m_disconnect(button(tr("Disconnect"), words.disconnect))
    , m_state(new WrappedLabel({}))
{
    m_token->setEchoMode(QLineEdit::Password);
    m_state->setAccessibleName(words.state);
    arrange(words);
    connect(m_connect, &QPushButton::clicked, this, &SchoolForm::requestConnection);
    connect(m_token, &QLineEdit::returnPressed, this, &SchoolForm::requestConnection);
    connect(m_sync, &QPushButton::clicked, this, &SchoolForm::syncRequested);
    connect(m_disconnect, &QPushButton::clicked, this, &SchoolForm::disconnectRequested);
}

void SchoolForm::showAddress(const QString& address)
{
    if (m_address->text() == m_shownAddress)
        m_address->setText(address);
    m_shownAddress = address;
    m_keptAddress = address;
}

void SchoolForm::showStatus(const ConnectionStatus& status, TimePoint now, const Calendar& calendar)
{
    const auto hasFailed = status.isWanted && !status.isSyncing && status.error.has_value();
    PanelStyle::setRole(*m_state, hasFailed ? QStringLiteral("problem") : QStringLiteral("detail"));
    PanelStyle::setText(*m_state, ConnectionTexts::state(status, now, calendar));
    m_isConnected = status.isWanted;
    m_connect->setDisabled(status.isSyncing);
    m_sync->setEnabled(status.isWanted && !status.isSyncing);
    m_disconnect->setEnabled(status.isWanted);
}

void SchoolForm::focusField()
{
    (m_addressRow ? m_address : m_token)->setFocus(Qt::OtherFocusReason);
}

void SchoolForm::arrange(const Words& words)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_address->setHidden(words.address.isEmpty());
    if (!words.address.isEmpty()) {
        m_address->setPlaceholderText(QStringLiteral("https://"));
        m_addressRow = new FieldRow({ words.address }, *m_address, FieldRow::Place::below);
        column->addWidget(m_addressRow);
    }
    m_tokenRow = new FieldRow({ words.token, words.tokenHint }, *m_token, FieldRow::Place::below);
    column->addWidget(m_tokenRow);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(gap);
    for (auto* const button : { m_connect, m_sync, m_disconnect })
        buttons->addWidget(button);
    buttons->addStretch(1);
    column->addSpacing(gap / 2);
    column->addLayout(buttons);
    column->addSpacing(gap);
    column->addWidget(m_state);
    column->addSpacing(gap);
}

void SchoolForm::requestConnection()
{
    const auto typed = m_address->text().trimmed();
    const auto address =
        typed.isEmpty() ? std::optional(QString()) : ConnectionTexts::address(typed);
    if (!canConnect(address) || !m_connect->isEnabled())
        return;
    const auto token = m_token->text().trimmed();
    m_token->clear();
    // From now on the address is the one that is kept.
    m_shownAddress = m_address->text();
    Q_EMIT connectRequested(*address, token);
}

bool SchoolForm::canConnect(const std::optional<QString>& address)
{
    // A token is never sent to another site than its own.
    const auto lacksToken = m_addressRow && m_isConnected && address != m_keptAddress
        && m_token->text().trimmed().isEmpty();
    if (m_addressRow)
        m_addressRow->setProblem(address ? QString()
                                         : tr("Enter the address of your school's site, such as "
                                              "https://school.instructure.com."));
    m_tokenRow->setProblem(address && lacksToken ? tr("Paste a token of this site.") : QString());
    return address && !lacksToken;
}

} // namespace pobblewig
