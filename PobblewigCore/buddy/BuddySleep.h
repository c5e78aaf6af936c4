#pragma once

namespace pobblewig {

/// Falls asleep when nothing happens: slowly down, quickly up.
class BuddySleep {
public:
    /// How long nothing must have happened by default, in seconds.
    static constexpr double usualDelay = 300;
    /// A sleeper moves at most this often, in seconds.
    static constexpr double beat = 0.5;

    explicit BuddySleep(double now)
        : m_lastActivityAt(now)
    {
    }

    /// From 0 (awake) to 1 (fast asleep).
    double amount() const { return m_amount; }
    bool areEyesClosed() const { return m_amount > 0.35; }

    void stir(double now) { m_lastActivityAt = now; }

    /// In seconds.
    void setDelay(double delay) { m_delay = delay; }

    /// As if nothing had happened for long enough.
    void dozeOff(double now) { m_lastActivityAt = now - m_delay; }

    void tick(double now, double frames, bool mayDoze);

private:
    double m_delay = usualDelay;
    double m_lastActivityAt;
    double m_amount = 0;
};

} // namespace pobblewig
