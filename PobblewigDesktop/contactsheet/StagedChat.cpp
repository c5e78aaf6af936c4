#include "PobblewigDesktop/contactsheet/StagedChat.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

Task<std::unique_ptr<LLMProvider>> lent(std::unique_ptr<LLMProvider> model)
{
    co_return std::move(model);
}

ScreenshotTaker::Dependencies lookingAt(ScreenCapturing& screen)
{
    return { &screen, []() -> Task<std::set<QString>> { co_return std::set<QString>(); } };
}

} // namespace

StagedChat::StagedChat()
    : m_chat(m_history, m_usage,
        {
            .mainProvider = [this] { return lent(std::make_unique<StagedModel>(m_prompter)); },
            .visionProvider = [] { return lent(nullptr); },
            .mainConfig = []() -> Task<MainModelConfig> { co_return MainModelConfig(); },
            .situationProvider = []() -> Task<SituationSnapshot> { co_return SituationSnapshot(); },
            .screenshots = lookingAt(m_screen),
            .clock = [] { return now; },
        })
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
    m_history.append(message);
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

} // namespace pobblewig
