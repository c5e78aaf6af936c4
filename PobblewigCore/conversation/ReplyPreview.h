#pragma once

#include "conversation/ControlFence.h"
#include "conversation/EnvelopeWatch.h"

#include <QString>

namespace pobblewig {

/// The visible part of a reply while it arrives. Always equals `ActionParser::sanitizeForPreview`
/// of the whole text, at a cost that is linear in its length.
///
/// The text only grows. Anything that may still become part of a control block is held back: a
/// fence with an incomplete tag, a JSON block until it ends, and an untagged block of actions while
/// nothing follows it, since it counts only at the very end.
class ReplyPreview {
public:
    void append(const QString& token);

    /// Without surrounding white space.
    const QString& text() const { return m_text; }

private:
    enum class State {
        text,
        /// A run of backticks.
        marks,
        tag,
        controlBlock,
        /// A control block that begins right after its tag and may end on the same line.
        controlLine,
        jsonBlock,
        untaggedBlock,
        /// A block that ends the reply unless more text follows.
        lastBlock,
    };

    bool advance();
    bool readText();
    bool readMarks();
    bool readTag();
    bool readControlBlock();
    bool readControlLine();
    bool readJSONBlock();
    bool readUntaggedBlock();
    bool readLastBlock();

    void beginTag();
    void beginBlock(const ControlFence::TagLine& line);
    void beginJSON(State state);
    /// Returns false if the text cannot become a block of actions.
    bool readJSON();
    bool isActionBlock() const;
    void endBlock(qsizetype fence);
    /// Treats the fence as text and continues after it.
    void giveUpBlock();
    /// Does the same, but hides what follows up to the next fence at the start of a line.
    void holdBlock();

    void show(qsizetype from, qsizetype to);
    void show(QStringView piece);
    void reveal();

    QString m_reply;
    State m_state = State::text;
    /// The position up to which the reply was read.
    qsizetype m_at = 0;
    /// The position of the current fence.
    qsizetype m_fence = 0;
    qsizetype m_behindFence = 0;
    qsizetype m_body = 0;
    /// Whether the fence ends a control block.
    bool m_isClosing = false;
    /// A hidden block has just ended.
    bool m_isBehindBlock = false;
    EnvelopeWatch m_watch;

    QString m_text;
    /// Possibly trailing white space, and everything after a fence that may belong to a malformed
    /// block.
    QString m_held;
    bool m_isHolding = false;
};

} // namespace pobblewig
