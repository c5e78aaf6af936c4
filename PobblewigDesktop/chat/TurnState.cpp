#include "PobblewigDesktop/chat/TurnState.h"

#include "PobblewigDesktop/chat/ChatHeader.h"

#include <utility>

namespace pobblewig {

TurnState::TurnState(ChatService& chat, Clock clock, ChatHeader& header, QObject* parent)
    : QObject(parent)
    , m_chat(chat)
    , m_clock(std::move(clock))
    , m_header(header)
{
    m_eachSecond.setInterval(std::chrono::seconds(1));
    connect(&m_eachSecond, &QTimer::timeout, this, &TurnState::show);
    connect(&chat.watch(), &TurnWatch::waitingChanged, this, &TurnState::followWait);
}

void TurnState::setRestingText(const QString& text)
{
    m_restingText = text;
    show();
}

void TurnState::setClosingSession(bool isClosing)
{
    m_isClosingSession = isClosing;
    show();
}

void TurnState::show()
{
    m_header.setState(words());
}

void TurnState::followWait()
{
    if (m_chat.watch().waiting())
        m_eachSecond.start();
    else
        m_eachSecond.stop();
    show();
}

QString TurnState::words() const
{
    if (m_chat.captureConsent().isAsking())
        return tr("waiting for your answer…");
    if (const auto& waiting = m_chat.watch().waiting()) {
        auto words = WaitingLogic::words(*waiting, m_chat.askedHost(), m_clock());
        if (!words.isEmpty())
            return words;
    }
    if (m_chat.isInTurn())
        return tr("thinking…");
    return m_isClosingSession ? tr("Summing up the day…") : m_restingText;
}

} // namespace pobblewig
