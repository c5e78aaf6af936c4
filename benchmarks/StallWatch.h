#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>

namespace pobblewig {

/// The longest time, in milliseconds, during which the event loop did nothing else.
class StallWatch {
public:
    StallWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([this] { tick(); });
        m_timer.start(1);
        m_sinceTick.start();
    }

    double longest() const { return m_longest; }

private:
    void tick()
    {
        m_longest = std::max(m_longest, double(m_sinceTick.nsecsElapsed()) / 1e6);
        m_sinceTick.start();
    }

    QTimer m_timer;
    QElapsedTimer m_sinceTick;
    double m_longest = 0;
};

} // namespace pobblewig
