#pragma once

#include "conversation/WaitingLogic.h"
#include "foundation/Moment.h"

#include <QObject>

namespace pobblewig {

/// What the turn waits for, and what its model thinks. For display only: thoughts are never stored,
/// and leave with the next turn.
class TurnWatch : public QObject {
    Q_OBJECT

public:
    /// Thoughts beyond this are forgotten, the oldest first.
    static constexpr qsizetype mostThoughts = 20'000;

    /// `moment` must outlive this object.
    explicit TurnWatch(const Moment& moment);

    const std::optional<Waiting>& waiting() const { return m_waiting; }
    const Thinking& thinking() const { return m_thinking; }

    void wait(Waiting::Cause cause);
    void think(const QString& thought);

    /// The reply is on its way, or will not come.
    void end();

    /// What was on its way since then was no reply.
    void takeForThought(const QString& thought);
    void forgetThoughts();

Q_SIGNALS:
    void waitingChanged();
    void thinkingChanged();

private:
    void stopThinking();

    const Moment& m_moment;
    std::optional<Waiting> m_waiting;
    Thinking m_thinking;
    /// When the last wait or thought ended.
    TimePoint m_ended;
};

} // namespace pobblewig
