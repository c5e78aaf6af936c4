#include "PobblewigDesktop/chat/NewSessionDelay.h"

#include "PobblewigDesktop/controls/Banner.h"

namespace pobblewig {

NewSessionDelay::NewSessionDelay(Banner& banner, QObject* parent)
    : QObject(parent)
    , m_banner(banner)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    m_banner.setAction(tr("Undo"), Icons::Name::retry);
    connect(&m_timer, &QTimer::timeout, this, &NewSessionDelay::passNow);
    connect(&m_banner, &Banner::actionTriggered, this, &NewSessionDelay::takeBack);
}

void NewSessionDelay::begin()
{
    m_timer.start();
    m_banner.setText(tr("A new session begins in a moment, or with your next message."));
    Q_EMIT isWaitingChanged();
}

void NewSessionDelay::takeBack()
{
    if (isWaiting())
        end();
}

void NewSessionDelay::passNow()
{
    end();
    Q_EMIT passed();
}

void NewSessionDelay::end()
{
    m_timer.stop();
    m_banner.setText({});
    Q_EMIT isWaitingChanged();
}

} // namespace pobblewig
