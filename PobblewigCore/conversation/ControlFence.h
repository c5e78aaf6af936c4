#pragma once

#include <QString>

#include <optional>

/// Finds the fences of control blocks in a reply. Every three backticks in a run are a fence; the
/// remaining ones belong to the last fence.
namespace pobblewig::ControlFence {

inline constexpr QStringView marks = u"```";

enum class Tag { other, none, json, buddyActions, buddyTools };

constexpr bool isControl(Tag tag)
{
    return tag == Tag::buddyActions || tag == Tag::buddyTools;
}

/// Whether the character is blank on the line of a tag, where "\r" is part of the line's end.
bool isBlank(QChar character);

/// The text that follows a fence on its line.
struct TagLine {
    Tag tag = Tag::other;
    /// Where the text after the tag and blanks begins: the end of the line if nothing follows, or
    /// the end of the text if more text could complete another tag.
    qsizetype end = 0;
    /// Whether nothing follows the tag, as far as the text goes.
    bool isWhole = false;
};

/// The tag line of the fence at this position.
TagLine tagLine(QStringView text, qsizetype fence);

struct Trailing {
    Tag tag = Tag::other;
    /// The position of the opening fence.
    qsizetype start = 0;
    QStringView body;
};

/// How many backticks in a run of this length precede its last fence.
constexpr qsizetype beforeLastFence(qsizetype run)
{
    return run / marks.size() * marks.size() - marks.size();
}

/// The block whose closing fence ends the text, if its tag may be that of a control block.
std::optional<Trailing> trailing(QStringView text);

/// Removes all control blocks. A block that does not end extends to the end of the text.
QString strip(QStringView text);

/// The text behind the last line break.
QStringView lastLine(QStringView text);

/// Whether a block has the tag of a control block, wherever it stands and whether it ends.
bool hasControlBlock(QStringView text);

/// Whether the last line holds a fence, so that text behind it could make a tag of it.
bool endsBehindFence(QStringView text);

/// Ends the last line of a text before which a block was removed, so that it does not make another
/// one with what follows.
void endLine(QString& kept);

} // namespace pobblewig::ControlFence
