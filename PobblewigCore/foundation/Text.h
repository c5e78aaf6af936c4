#pragma once

#include <QString>

/// Text as people count it: a character is a grapheme cluster, so an emoji family is one.
namespace pobblewig::Text {

qsizetype characterCount(const QString& text);

/// However long the text, no more than 32 units of it are looked at for each character; one that
/// is longer may be cut.
QString firstCharacters(const QString& text, qsizetype count);

/// A paragraph that nobody can hide anything in: without control characters, invisible ones and
/// marks that turn the direction of writing, with single blanks. A longer text ends in "…".
QString plainLine(const QString& text, qsizetype count);

/// "1 minute", "2 minutes".
QString counted(qint64 count, QStringView thing);

/// What makes two texts the same statement: lower case, and single blanks between the words.
QString normalized(const QString& text);

/// What others wrote, fit for a line that the user reads: a line break or tab becomes a blank, and
/// the other control characters and the marks that turn the direction of writing are gone.
QString onOneLine(const QString& text);

} // namespace pobblewig::Text
