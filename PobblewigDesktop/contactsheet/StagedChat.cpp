#include "PobblewigDesktop/contactsheet/StagedChat.h"

#include <QCoreApplication>

#include <utility>

namespace pobblewig {

StagedChat::StagedChat()
    : m_room({ .directory = std::nullopt, .moment = m_moment, .keychain = m_keychain })
    , m_chat(m_stores, m_moment,
          { .models = m_models,
              .situation = situation,
              .screen = { &m_screen, nullptr },
              .environmentFile = QStringLiteral("/home/ada/.config/Pobblewig/environment") })
{
}

StagedChat::~StagedChat()
{
    // A turn outlives its service unless it is told to end.
    m_chat.cancelStreaming();
    QCoreApplication::processEvents();
}

void StagedChat::add(const ChatMessage& message)
{
    m_stores.history.append(message);
    m_chat.reload();
}

void StagedChat::exchange(const QString& question, const QString& answer, TimePoint time)
{
    using Role = ChatMessage::Role;
    for (const auto& [role, text] :
        { std::pair(Role::user, question), { Role::assistant, answer } })
        add({ .id = QUuid::createUuid(), .role = role, .text = text, .timestamp = time });
}

void StagedChat::ask(const QString& text, ChatService::Screenshot screenshot)
{
    m_prompter.reset();
    m_chat.submit(text, screenshot);
    while (!m_prompter)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void StagedChat::fail(const LLMFailure& error)
{
    while (m_chat.isInTurn()) {
        if (const auto prompter = std::exchange(m_prompter, std::nullopt))
            prompter->finish(error);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace pobblewig
