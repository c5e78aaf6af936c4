#pragma once

#include <QString>

namespace pobblewig {

/// Separates the thoughts that a model writes in front of its reply, between "<think>" and
/// "</think>", while the text arrives. What stands anywhere else is the reply.
///
/// Some servers put the opening tag into the prompt, so that only the closing one arrives. The
/// first closing tag then tells that the text so far was thought, unless that text speaks of the
/// tags or has begun a piece of code.
class ThoughtSplitter {
public:
    struct Parts {
        /// All that was passed on as the reply before was thought. What follows comes after it.
        bool wasThought = false;
        QString thought = {};
        QString reply = {};
    };

    Parts add(const QString& text);

    /// What was held back because it could have become a tag.
    Parts finish();

private:
    enum class State {
        beginning,
        thinking,
        /// Passed on as the reply, as long as no closing tag follows.
        undecided,
        gap,
        reply,
    };

    Parts advance();
    Parts advanceThought();
    Parts advanceUndecided();
    /// Passes on all but what may become the closing tag.
    QString beforeClosing();

    State m_state = State::beginning;
    QString m_held;
    /// The text while it is undecided.
    QString m_passed;
};

} // namespace pobblewig
