#include "PobblewigDesktop/chat/MessageComposer.h"

#include "PobblewigDesktop/chat/MessageInput.h"
#include "PobblewigDesktop/chat/Quotation.h"
#include "PobblewigDesktop/chat/SuggestionBar.h"
#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "prompts/VisionUserPrompt.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int gap = 8;

QToolButton* inputButton(const QString& name, QWidget* parent)
{
    auto* const button = new QToolButton(parent);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setIconSize({ 20, 20 });
    button->setFixedSize(36, 36);
    return button;
}

} // namespace

MessageComposer::MessageComposer(ChatService& chat, QWidget* parent)
    : QWidget(parent)
    , m_chat(chat)
    , m_suggestions(new SuggestionBar(this))
    , m_capture(new QLabel(this))
    , m_input(new MessageInput(this))
    , m_screen(inputButton(tr("Look at my screen"), this))
    , m_send(inputButton(tr("Send"), this))
    , m_stop(inputButton(tr("Stop"), this))
{
    setFocusProxy(m_input);
    arrange();
    connectChat();
    connectControls();
    m_input->setPlainText(m_chat.draft());
    m_input->moveCursor(QTextCursor::End);
    showTurn();
    showUnsent();
    showSuggestions();
    showCapture();
}

void MessageComposer::setTheme(const Palette& palette)
{
    m_input->setTheme(palette);
    m_screen->setIcon(Icons::icon(Icons::Name::screen, palette.text, palette.muted));
    m_send->setIcon(Icons::icon(Icons::Name::send, palette.onAccent, palette.muted));
    m_stop->setIcon(Icons::icon(Icons::Name::stop, palette.onAccent, palette.muted));
}

void MessageComposer::setSuggestions(const std::vector<FirstMinute::Suggestion>& suggestions)
{
    m_suggestions->setSuggestions(suggestions);
}

void MessageComposer::quote(const QString& text)
{
    const auto quotation = Quotation::ofText(text);
    if (quotation.isEmpty())
        return;
    m_input->moveCursor(QTextCursor::End);
    const auto division = m_input->isBlank() ? QString() : QStringLiteral("\n\n");
    m_input->insertPlainText(division + quotation);
    m_input->setFocus(Qt::OtherFocusReason);
}

void MessageComposer::keepDraft()
{
    m_chat.keepDraft(m_input->toPlainText());
}

void MessageComposer::arrange()
{
    PanelStyle::setRole(*m_capture, QStringLiteral("caption"));
    PanelStyle::setRole(*m_send, QStringLiteral("primary"));
    PanelStyle::setRole(*m_stop, QStringLiteral("primary"));
    m_capture->setAccessibleName(tr("Captured"));
    m_capture->setTextFormat(Qt::PlainText);
    m_capture->setWordWrap(true);

    auto* const writing = new QHBoxLayout;
    writing->setSpacing(gap);
    writing->addWidget(m_input, 1);
    for (auto* const button : { m_screen, m_send, m_stop })
        writing->addWidget(button, 0, Qt::AlignBottom);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(m_suggestions);
    column->addWidget(m_capture);
    column->addLayout(writing);
}

void MessageComposer::connectChat()
{
    connect(&m_chat, &ChatService::activityChanged, this, &MessageComposer::showTurn);
    connect(&m_chat, &ChatService::activityChanged, this, &MessageComposer::showUnsent);
    connect(&m_chat, &ChatService::lastErrorChanged, this, &MessageComposer::showUnsent);
    connect(&m_chat, &ChatService::messagesChanged, this, &MessageComposer::showSuggestions);
    connect(&m_chat, &ChatService::captureIndicatorChanged, this, &MessageComposer::showCapture);
}

void MessageComposer::connectControls()
{
    connect(m_input, &MessageInput::submitted, this, &MessageComposer::send);
    connect(m_input, &MessageInput::textChanged, this, &MessageComposer::showTurn);
    connect(m_input, &MessageInput::textChanged, this, &MessageComposer::typed);
    connect(m_suggestions, &SuggestionBar::chosen, this, &MessageComposer::tryOut);
    connect(m_screen, &QToolButton::clicked, this, &MessageComposer::sendWithScreen);
    connect(m_send, &QToolButton::clicked, this, &MessageComposer::send);
    connect(m_stop, &QToolButton::clicked, &m_chat, &ChatService::cancelStreaming);
}

void MessageComposer::showTurn()
{
    const auto isInTurn = m_chat.isInTurn();
    m_send->setVisible(!isInTurn);
    m_stop->setVisible(isInTurn);
    m_send->setEnabled(!m_input->isBlank());
    m_screen->setEnabled(!isInTurn);
}

void MessageComposer::showUnsent()
{
    const auto unsent = m_chat.unsentText();
    if (unsent && *unsent != Prompts::visionUserPrompt && m_input->isBlank())
        m_input->setPlainText(*unsent);
}

void MessageComposer::showSuggestions()
{
    m_suggestions->setVisible(std::ranges::none_of(m_chat.messages(),
        [](const auto& message) { return message.role == ChatMessage::Role::user; }));
}

void MessageComposer::showCapture()
{
    const auto& indicator = m_chat.captureIndicator();
    PanelStyle::setText(*m_capture, indicator.value_or(QString()));
    m_capture->setVisible(indicator.has_value());
}

void MessageComposer::tryOut(const FirstMinute::Suggestion& suggestion)
{
    if (!suggestion.answer.isEmpty()) {
        m_chat.sayOffTheRecord(suggestion.answer);
        Q_EMIT said();
        return;
    }
    m_input->setPlainText(suggestion.text);
    send();
}

void MessageComposer::send()
{
    if (!m_input->isBlank())
        submit(m_input->toPlainText(), ChatService::Screenshot::without);
}

void MessageComposer::sendWithScreen()
{
    const auto text =
        m_input->isBlank() ? Prompts::visionUserPrompt.toString() : m_input->toPlainText();
    submit(text, ChatService::Screenshot::with);
}

void MessageComposer::submit(const QString& text, ChatService::Screenshot screenshot)
{
    // A turn can fail at once and give the text back, so the field is emptied first.
    const auto written = m_input->toPlainText();
    m_input->clear();
    Q_EMIT submitting();
    if (m_chat.submit(text, screenshot))
        Q_EMIT said();
    else
        giveBack(written);
    keepDraft();
}

void MessageComposer::giveBack(const QString& text)
{
    m_input->setPlainText(text);
    if (!m_chat.isInTurn())
        Q_EMIT refused(tr("The last picture is still being taken. Try again in a moment."));
}

} // namespace pobblewig
