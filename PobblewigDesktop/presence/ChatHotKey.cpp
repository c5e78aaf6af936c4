#include "PobblewigDesktop/presence/ChatHotKey.h"

namespace pobblewig {

namespace {

const auto hotKeyKey = QStringLiteral("chat/hotKey");

} // namespace

ChatHotKey::ChatHotKey(QSettings& settings)
    : m_settings(settings)
{
}

QKeySequence ChatHotKey::defaultKeys()
{
    return { Qt::CTRL | Qt::ALT | Qt::Key_Space };
}

QKeySequence ChatHotKey::keys() const
{
    const auto kept = m_settings.value(hotKeyKey);
    return kept.isValid() ? QKeySequence(kept.toString(), QKeySequence::PortableText)
                          : defaultKeys();
}

void ChatHotKey::start(HotKeyProviding& hotKeys)
{
    m_hotKeys = &hotKeys;
    connect(m_hotKeys, &HotKeyProviding::pressed, this, &ChatHotKey::pressed);
    spawn(takeKept());
}

void ChatHotKey::change(const QKeySequence& keys)
{
    spawn(takeOthers(keys));
}

Task<> ChatHotKey::takeKept()
{
    const auto wanted = keys();
    const auto outcome = co_await m_hotKeys->assign(wanted);
    m_isHeld = outcome && !wanted.isEmpty();
    if (outcome)
        co_return;
    // Who said no is not asked again at every start.
    if (outcome.error().kind == HotKeyError::Kind::refused)
        keep({});
    Q_EMIT missing(outcome.error());
}

Task<> ChatHotKey::takeOthers(QKeySequence keys)
{
    const auto outcome = co_await m_hotKeys->assign(keys);
    if (outcome) {
        m_isHeld = !keys.isEmpty();
        keep(keys);
        Q_EMIT changed();
    } else {
        Q_EMIT notChanged(outcome.error());
    }
}

void ChatHotKey::keep(const QKeySequence& keys)
{
    m_settings.setValue(hotKeyKey, keys.toString(QKeySequence::PortableText));
}

} // namespace pobblewig
