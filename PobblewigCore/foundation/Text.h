#pragma once

#include <QString>

/// Text as people count it: a character is a grapheme cluster, so an emoji family is one character.
namespace pobblewig::Text {

qsizetype characterCount(const QString& text);

/// Reads at most 32 units for each character, however long the text. A longer character may be cut.
QString firstCharacters(const QString& text, qsizetype count);

/// One paragraph with nothing hidden in it: without control characters, invisible ones and marks
/// that change the direction of writing, and with single blanks. A longer text ends in "…".
QString plainLine(const QString& text, qsizetype count);

/// "1 minute", "2 minutes".
QString counted(qint64 count, QStringView thing);

/// Two texts with this in common make the same statement: lower case, single blanks between words.
QString normalized(const QString& text);

/// Text from elsewhere, made fit for a line that the user reads: a line break or tab becomes a
/// blank; other control characters and marks that change the direction of writing are removed.
QString onOneLine(const QString& text);

/// What another program wrote, such as the title of a window: on one line and at most 200
/// characters long. A longer text ends in "…".
QString foreignLine(const QString& text);

} // namespace pobblewig::Text
