#pragma once

#include "presence/Bubble.h"

#include <chrono>
#include <optional>
#include <vector>

/// Decides what the buddy says outside the chat, in which order and for how long.
namespace pobblewig::BubbleLogic {

using Bubbles = std::vector<Bubble>;

/// What fits into a bubble: three lines of 40 characters.
constexpr int lines = 3;
constexpr int charactersPerLine = 40;

/// Adds a bubble to those that wait, of which the first is shown. Reminders are kept side by side,
/// at most five; of the other kinds, the latest replaces the one before.
Bubbles withAdded(Bubbles waiting, Bubble bubble);

Bubbles without(Bubbles waiting, Bubble::Kind kind);

/// Returns nothing if it stays until the user sees or dismisses it.
std::optional<std::chrono::milliseconds> duration(Bubble::Kind kind);

/// Whether the buddy keeps a mark after the bubble, until the chat is opened.
bool leavesMark(Bubble::Kind kind);

/// Returns the first line with words of a text in Markdown, without its signs, cut to fit into a
/// bubble. Empty if there is none.
QString firstLine(const QString& markdown);

/// Returns a plain text as one line, cut to fit into a bubble.
QString fitted(const QString& text);

/// Returns "2 things wait for you".
QString waitingInWords(qsizetype proposals);

} // namespace pobblewig::BubbleLogic
