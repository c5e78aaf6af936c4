#pragma once

#include <QString>

namespace pobblewig {

/// Separates the thoughts that a model writes in front of its reply, between "<think>" and
/// "</think>", while the text arrives. What stands anywhere else is the reply.
class ThoughtSplitter {
public:
    struct Parts {
        QString thought;
        QString reply;
    };

    Parts add(const QString& text);

    /// What was held back because it could have become a tag.
    Parts finish();

private:
    enum class State { beginning, thinking, gap, reply };

    Parts advance();

    State m_state = State::beginning;
    QString m_held;
};

} // namespace pobblewig
