#pragma once

#include "conversation/ControlFence.h"
#include "conversation/EnvelopeWatch.h"

#include <QString>

namespace pobblewig {

/// What the user sees of a reply while it arrives: the same text at any moment as
/// `ActionParser::sanitizeForPreview` of the whole, at a cost that is linear in all that arrived.
///
/// It only ever grows. Whatever may yet become part of a control block waits until it cannot: a
/// fence whose tag is incomplete, a JSON block up to its end, and an untagged block of actions for
/// as long as nothing follows it, since only at the very end it is one.
class ReplyPreview {
public:
    void append(const QString& token);

    /// Without white space around it.
    const QString& text() const { return m_text; }

private:
    enum class State {
        text,
        /// A run of backticks.
        marks,
        tag,
        controlBlock,
        /// A control block that begins behind its tag and perhaps ends on the same line.
        controlLine,
        jsonBlock,
        untaggedBlock,
        /// Which ends the reply, unless something follows.
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
    /// False once it cannot be a block of actions.
    bool readJSON();
    bool isActionBlock() const;
    void endBlock(qsizetype fence);
    /// Takes the fence for text and goes on behind it.
    void giveUpBlock();
    /// The same, but what follows stays unseen up to the next fence that begins a line.
    void holdBlock();

    void show(qsizetype from, qsizetype to);
    void show(QStringView piece);
    void reveal();

    QString m_reply;
    State m_state = State::text;
    /// Up to where the reply was read.
    qsizetype m_at = 0;
    /// Of the fence that is being read.
    qsizetype m_fence = 0;
    qsizetype m_behindFence = 0;
    qsizetype m_body = 0;
    /// Whether the fence ends a control block.
    bool m_isClosing = false;
    EnvelopeWatch m_watch;

    QString m_text;
    /// White space that may be the last, and all behind a fence that may be a block written
    /// wrongly.
    QString m_held;
    bool m_isHolding = false;
};

} // namespace pobblewig
