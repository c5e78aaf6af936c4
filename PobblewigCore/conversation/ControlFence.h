#pragma once

#include <QString>

#include <optional>

/// Where in a reply the fences of control blocks stand. A run of backticks is as many fences as it
/// has three of; those left over go with the last of them.
namespace pobblewig::ControlFence {

inline constexpr QStringView marks = u"```";

enum class Tag { other, none, json, buddyActions, buddyTools };

constexpr bool isControl(Tag tag)
{
    return tag == Tag::buddyActions || tag == Tag::buddyTools;
}

/// As far as the line of a tag is concerned, where "\r" belongs to the line's end.
bool isBlank(QChar character);

/// What stands behind a fence on its line.
struct TagLine {
    Tag tag = Tag::other;
    /// Where what is neither tag nor blank begins: the line's end, if the tag is all. The text's
    /// end, if more of it could tell another tag.
    qsizetype end = 0;
    /// Nothing but the tag, as far as the text goes.
    bool isWhole = false;
};

/// Of the fence that begins there.
TagLine tagLine(QStringView text, qsizetype fence);

struct Trailing {
    Tag tag = Tag::other;
    /// Of the opening.
    qsizetype start = 0;
    QStringView body;
};

/// How many backticks of a run that long precede its last fence.
constexpr qsizetype beforeLastFence(qsizetype run)
{
    return run / marks.size() * marks.size() - marks.size();
}

/// The fence that ends the text, if its tag may be that of a control block.
std::optional<Trailing> trailing(QStringView text);

/// Without the control blocks, wherever they stand; one that does not end goes to the text's end.
QString strip(QStringView text);

} // namespace pobblewig::ControlFence
