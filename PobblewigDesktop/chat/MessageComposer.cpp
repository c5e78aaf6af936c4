#include "PobblewigDesktop/chat/MessageComposer.h"

#include "PobblewigDesktop/chat/CaptureLine.h"
#include "PobblewigDesktop/chat/ComposerBar.h"
#include "PobblewigDesktop/chat/MessageInput.h"
#include "PobblewigDesktop/chat/Paragraphs.h"
#include "PobblewigDesktop/chat/QuestionEditing.h"
#include "PobblewigDesktop/chat/Quotation.h"
#include "PobblewigDesktop/chat/SuggestionBar.h"
#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "prompts/VisionUserPrompt.h"

#include <QHBoxLayout>
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
    , m_capture(new CaptureLine(chat, this))
    , m_next(new ComposerBar({ .name = tr("Next message"), .actionName = tr("Do not send") }, this))
    , m_editing(new QuestionEditing(this))
    , m_input(new MessageInput(this))
    , m_screen(inputButton(tr("Look at my screen"), this))
    , m_send(inputButton(tr("Send"), this))
    , m_stop(inputButton(tr("Stop"), this))
{
    setFocusProxy(m_input);
    arrange();
    connectChat();
    connectControls();
    write(m_chat.draft());
    showTurn();
    showUnsent();
    showSuggestions();
}

void MessageComposer::setTheme(const Palette& palette)
{
    m_next->setTheme(palette);
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
    m_chat.keepDraft(Paragraphs::joined(m_queued, begun()));
}

void MessageComposer::edit()
{
    const auto question = m_chat.changeableQuestion();
    if (!question || m_editing->isUnderWay())
        return;
    m_editing->begin(*question, m_input->toPlainText());
    write(question->text);
    showTurn();
    m_input->setFocus(Qt::OtherFocusReason);
}

bool MessageComposer::cancelEditing()
{
    if (!m_editing->isUnderWay())
        return false;
    stopEditing(QString(m_editing->setAside()));
    return true;
}

void MessageComposer::arrange()
{
    PanelStyle::setRole(*m_send, QStringLiteral("primary"));
    PanelStyle::setRole(*m_stop, QStringLiteral("primary"));

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
    column->addWidget(m_next);
    column->addWidget(m_editing);
    column->addLayout(writing);
}

void MessageComposer::connectChat()
{
    connect(&m_chat, &ChatService::activityChanged, this, &MessageComposer::showTurn);
    connect(&m_chat, &ChatService::activityChanged, this, &MessageComposer::showUnsent);
    connect(&m_chat, &ChatService::activityChanged, this, &MessageComposer::followTurn);
    connect(&m_chat, &ChatService::messagesChanged, this, &MessageComposer::checkEditing);
    connect(&m_chat, &ChatService::lastErrorChanged, this, &MessageComposer::showUnsent);
    connect(&m_chat, &ChatService::messagesChanged, this, &MessageComposer::showSuggestions);
}

void MessageComposer::connectControls()
{
    connect(m_input, &MessageInput::submitted, this, &MessageComposer::send);
    connect(m_input, &MessageInput::recalled, this, &MessageComposer::recall);
    connect(m_next, &ComposerBar::ended, this, &MessageComposer::takeBackQueued);
    connect(m_editing, &ComposerBar::ended, this, &MessageComposer::cancelEditing);
    connect(m_input, &MessageInput::textChanged, this, &MessageComposer::showTurn);
    connect(m_input, &MessageInput::textChanged, this, &MessageComposer::typed);
    connect(m_suggestions, &SuggestionBar::chosen, this, &MessageComposer::tryOut);
    connect(m_screen, &QToolButton::clicked, this, &MessageComposer::sendWithScreen);
    connect(m_send, &QToolButton::clicked, this, &MessageComposer::send);
    connect(m_stop, &QToolButton::clicked, &m_chat, &ChatService::cancelStreaming);
}

void MessageComposer::followTurn(bool isWorking, bool hasSucceeded)
{
    if (isWorking)
        leaveEditing();
    else if (hasSucceeded)
        // Others have yet to hear that this turn has ended.
        QMetaObject::invokeMethod(this, &MessageComposer::sendQueued, Qt::QueuedConnection);
    else
        takeBackQueued();
}

void MessageComposer::showTurn()
{
    const auto isInTurn = m_chat.isInTurn();
    m_send->setVisible(!isInTurn);
    m_stop->setVisible(isInTurn);
    m_send->setEnabled(!m_input->isBlank());
    m_screen->setEnabled(!isInTurn && !m_editing->isUnderWay());
}

QString MessageComposer::begun() const
{
    return m_editing->begun(m_input->toPlainText());
}

void MessageComposer::write(const QString& text)
{
    m_input->setPlainText(text);
    m_input->moveCursor(QTextCursor::End);
}

void MessageComposer::stopEditing(const QString& text)
{
    m_editing->end();
    write(text);
    showTurn();
}

void MessageComposer::checkEditing()
{
    const auto newest = m_chat.changeableQuestion();
    if (!newest || newest->id != m_editing->question())
        leaveEditing();
}

void MessageComposer::leaveEditing()
{
    if (m_editing->isUnderWay())
        stopEditing(begun());
}

void MessageComposer::recall()
{
    if (m_queued.isEmpty())
        edit();
    else
        takeBackQueued();
}

void MessageComposer::queue()
{
    setQueued(Paragraphs::joined(m_queued, m_input->toPlainText()));
    m_input->clear();
    keepDraft();
}

void MessageComposer::setQueued(const QString& text)
{
    m_queued = text;
    m_next->setText(text.isEmpty() ? QString() : tr("Next: %1").arg(text));
}

void MessageComposer::sendQueued()
{
    if (m_queued.isEmpty() || m_chat.isInTurn())
        return;
    const auto text = m_queued;
    setQueued({});
    Q_EMIT submitting();
    if (m_chat.submit(text))
        Q_EMIT said();
    keepDraft();
}

void MessageComposer::takeBackQueued()
{
    if (m_queued.isEmpty())
        return;
    const auto written = m_input->toPlainText();
    // A message that could not be sent came first.
    const auto isUnsent = m_chat.unsentText() == written;
    const auto text =
        isUnsent ? Paragraphs::joined(written, m_queued) : Paragraphs::joined(m_queued, written);
    setQueued({});
    write(text);
    keepDraft();
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

void MessageComposer::tryOut(const FirstMinute::Suggestion& suggestion)
{
    if (!suggestion.answer.isEmpty()) {
        m_chat.say({ .text = suggestion.answer, .isOffTheRecord = true });
        Q_EMIT said();
        return;
    }
    m_input->setPlainText(suggestion.text);
    send();
}

void MessageComposer::send()
{
    if (m_input->isBlank())
        return;
    if (m_chat.isInTurn())
        queue();
    else if (m_editing->isUnderWay())
        submitEdited();
    else
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

void MessageComposer::submitEdited()
{
    const auto question = m_editing->question();
    const auto text = m_input->toPlainText();
    cancelEditing();
    m_chat.submitInstead(question, text);
    Q_EMIT said();
    keepDraft();
}

void MessageComposer::giveBack(const QString& text)
{
    m_input->setPlainText(text);
    if (!m_chat.isInTurn())
        Q_EMIT refused(tr("The last picture is still being taken. Try again in a moment."));
}

} // namespace pobblewig
