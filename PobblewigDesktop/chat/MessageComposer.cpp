#include "PobblewigDesktop/chat/MessageComposer.h"

#include "PobblewigDesktop/chat/AttachmentControls.h"
#include "PobblewigDesktop/chat/AttachmentTray.h"
#include "PobblewigDesktop/chat/CaptureLine.h"
#include "PobblewigDesktop/chat/InputButton.h"
#include "PobblewigDesktop/chat/MessageInput.h"
#include "PobblewigDesktop/chat/Paragraphs.h"
#include "PobblewigDesktop/chat/QuestionEditing.h"
#include "PobblewigDesktop/chat/QueuedMessage.h"
#include "PobblewigDesktop/chat/QuickAnswerBar.h"
#include "PobblewigDesktop/chat/Quotation.h"
#include "PobblewigDesktop/chat/SuggestionBar.h"
#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "connections/ComingUpLogic.h"
#include "conversation/attachments/AttachmentLogic.h"
#include "prompts/AttachmentPrompts.h"
#include "prompts/VisionUserPrompt.h"

#include <QHBoxLayout>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr int gap = 8;

} // namespace

MessageComposer::MessageComposer(ChatService& chat, QWidget* parent)
    : QWidget(parent)
    , m_chat(chat)
    , m_suggestions(new SuggestionBar(this))
    , m_quickAnswers(new QuickAnswerBar(this))
    , m_capture(new CaptureLine(chat, this))
    , m_queue(new QueuedMessage(this))
    , m_editing(new QuestionEditing(this))
    , m_tray(new AttachmentTray(this))
    , m_input(new MessageInput(this))
    , m_attaching(new AttachmentControls(chat, this))
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
    m_queue->setTheme(palette);
    m_tray->setTheme(palette);
    m_attaching->setTheme(palette);
    m_input->setTheme(palette);
    m_send->setIcon(Icons::icon(Icons::Name::send, palette.onAccent, palette.muted));
    m_stop->setIcon(Icons::icon(Icons::Name::stop, palette.onAccent, palette.muted));
}

void MessageComposer::setSuggestions(const std::vector<FirstMinute::Suggestion>& suggestions)
{
    m_suggestions->setSuggestions(suggestions);
}

void MessageComposer::setInterventions(const std::vector<InterventionRecord>& records)
{
    if (records == m_interventions)
        return;
    m_interventions = records;
    showSuggestions();
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

void MessageComposer::attach(const DropContents& contents)
{
    m_tray->add(contents);
    m_input->setFocus(Qt::OtherFocusReason);
}

void MessageComposer::keepDraft()
{
    m_chat.keepDraft(Paragraphs::joined(m_queue->text(), begun()));
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
    writing->addWidget(m_attaching, 0, Qt::AlignBottom);
    for (auto* const button : { m_send, m_stop })
        writing->addWidget(button, 0, Qt::AlignBottom);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(m_suggestions);
    column->addWidget(m_quickAnswers);
    column->addWidget(m_capture);
    column->addWidget(m_queue);
    column->addWidget(m_editing);
    column->addWidget(m_tray);
    column->addLayout(writing);
}

void MessageComposer::connectChat()
{
    connect(&m_chat, &ChatService::activityChanged, this, &MessageComposer::showTurn);
    connect(&m_chat, &ChatService::activityChanged, this, &MessageComposer::showUnsent);
    connect(&m_chat, &ChatService::activityChanged, this, &MessageComposer::followTurn);
    connect(&m_chat, &ChatService::messagesChanged, this, &MessageComposer::checkEditing);
    connect(&m_chat, &ChatService::messagesChanged, this, &MessageComposer::forgetUnsent);
    connect(&m_chat, &ChatService::lastErrorChanged, this, &MessageComposer::showUnsent);
    connect(&m_chat, &ChatService::messagesChanged, this, &MessageComposer::showSuggestions);
}

void MessageComposer::connectControls()
{
    connect(m_input, &MessageInput::submitted, this, &MessageComposer::send);
    connect(m_input, &MessageInput::recalled, this, &MessageComposer::recall);
    connect(m_queue, &ComposerBar::ended, this, &MessageComposer::takeBackQueued);
    connect(m_editing, &ComposerBar::ended, this, &MessageComposer::cancelEditing);
    connect(m_input, &MessageInput::textChanged, this, &MessageComposer::showTurn);
    connect(m_input, &MessageInput::textChanged, this, &MessageComposer::typed);
    connect(m_quickAnswers, &QuickAnswerBar::answered, this, &MessageComposer::quickAnswered);
    connect(m_suggestions, &SuggestionBar::chosen, this, &MessageComposer::tryOut);
    connect(m_input, &MessageInput::offered, this, &MessageComposer::attach);
    connect(m_tray, &AttachmentTray::changed, this, &MessageComposer::showTurn);
    connect(m_tray, &AttachmentTray::refused, this, &MessageComposer::refused);
    connect(
        m_attaching, &AttachmentControls::screenRequested, this, &MessageComposer::sendWithScreen);
    connect(m_attaching, &AttachmentControls::filesChosen, this,
        [this](const QList<QUrl>& files) { attach({ .files = files }); });
    connect(m_attaching, &AttachmentControls::partTaken, this,
        [this](const QImage& part) { m_tray->add(part, tr("Part of the screen")); });
    connect(m_attaching, &AttachmentControls::refused, this, &MessageComposer::refused);
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
    m_send->setEnabled(!isEmpty());
    m_attaching->setScreenEnabled(!isInTurn && !m_editing->isUnderWay());
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
    if (m_queue->isEmpty())
        edit();
    else
        takeBackQueued();
}

void MessageComposer::queue()
{
    if (m_queue->attachments().size() + m_tray->count() > AttachmentLogic::most) {
        Q_EMIT refused(tr("The next message has no room for more files. It is sent first."));
        return;
    }
    m_queue->add(message(), m_tray->take());
    m_input->clear();
    keepDraft();
}

void MessageComposer::sendQueued()
{
    if (m_queue->isEmpty() || m_chat.isInTurn())
        return;
    const auto text = m_queue->text();
    const auto attachments = m_queue->attachments();
    m_queue->clear();
    Q_EMIT submitting();
    if (m_chat.submit(text, ChatService::Screenshot::without, attachments))
        Q_EMIT said();
    keepDraft();
}

void MessageComposer::takeBackQueued()
{
    if (m_queue->isEmpty())
        return;
    const auto written = m_input->toPlainText();
    const auto queued = m_queue->text();
    // A message that could not be sent came first.
    const auto isUnsent = m_chat.unsentText() == written;
    const auto text =
        isUnsent ? Paragraphs::joined(written, queued) : Paragraphs::joined(queued, written);
    m_tray->putBack(m_queue->attachments());
    m_queue->clear();
    write(text);
    keepDraft();
}

void MessageComposer::showUnsent()
{
    const auto unsent = m_chat.unsentText();
    if (!unsent || !isEmpty() || (m_unsent && m_unsent->text == *unsent))
        return;
    const auto attachments = m_chat.unsentAttachments();
    const auto isOurs =
        *unsent == Prompts::visionUserPrompt || *unsent == Prompts::attachmentUserPrompt;
    m_unsent = Unsent { *unsent, isOurs ? QString() : *unsent, attachments.size() };
    m_input->setPlainText(m_unsent->shown);
    m_tray->putBack(attachments);
}

void MessageComposer::forgetUnsent()
{
    if (!m_unsent || m_chat.messages().empty())
        return;
    const auto& newest = m_chat.messages().back();
    const auto isAsked = newest.role == ChatMessage::Role::user
        && AttachmentLogic::withoutLine(newest.text) == m_unsent->text.trimmed();
    if (!isAsked)
        return;
    const auto unsent = *std::exchange(m_unsent, std::nullopt);
    // What the user has added since is the next message.
    if (m_input->toPlainText() != unsent.shown || m_tray->count() != unsent.attachments)
        return;
    m_input->clear();
    m_tray->take();
}

void MessageComposer::showSuggestions()
{
    const auto question = QuickAnswerLogic::question(m_chat.messages(), m_interventions);
    const auto hasSpoken = std::ranges::any_of(m_chat.messages(),
        [](const auto& message) { return message.role == ChatMessage::Role::user; });
    m_quickAnswers->setQuestion(question);
    m_suggestions->setVisible(!question && !hasSpoken);
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
    if (isEmpty() || !isReady())
        return;
    if (ComingUpLogic::isAskedFor(m_input->toPlainText()))
        Q_EMIT askedForComingUp();
    if (m_chat.isInTurn())
        queue();
    else if (m_editing->isUnderWay())
        submitEdited();
    else
        submit(message(), ChatService::Screenshot::without);
}

void MessageComposer::sendWithScreen()
{
    const auto text =
        m_input->isBlank() ? Prompts::visionUserPrompt.toString() : m_input->toPlainText();
    if (isReady())
        submit(text, ChatService::Screenshot::with);
}

void MessageComposer::submit(const QString& text, ChatService::Screenshot screenshot)
{
    // A turn can fail at once and give the text back, so the field is emptied first.
    const auto written = m_input->toPlainText();
    const auto attachments = m_tray->take();
    m_unsent.reset();
    m_input->clear();
    Q_EMIT submitting();
    if (m_chat.submit(text, screenshot, attachments))
        Q_EMIT said();
    else
        giveBack(written, attachments);
    keepDraft();
}

void MessageComposer::submitEdited()
{
    const auto question = m_editing->question();
    const auto text = message();
    const auto attachments = m_tray->take();
    cancelEditing();
    m_chat.submitInstead(question, text, attachments);
    Q_EMIT said();
    keepDraft();
}

void MessageComposer::giveBack(const QString& text, const ChatService::Attachments& attachments)
{
    m_input->setPlainText(text);
    m_tray->putBack(attachments);
    if (!m_chat.isInTurn())
        Q_EMIT refused(tr("The last picture is still being taken. Try again in a moment."));
}

bool MessageComposer::isEmpty() const
{
    return m_input->isBlank() && m_tray->isEmpty();
}

bool MessageComposer::isReady()
{
    if (m_tray->isReading())
        Q_EMIT refused(tr("A file is still being read. Try again in a moment."));
    return !m_tray->isReading();
}

QString MessageComposer::message() const
{
    return m_input->isBlank() ? Prompts::attachmentUserPrompt.toString() : m_input->toPlainText();
}

} // namespace pobblewig
