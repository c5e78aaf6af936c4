#pragma once

#include <QString>

/// Turns a text from elsewhere into a quotation that the user can ask about.
namespace pobblewig::Quotation {

/// In characters.
constexpr qsizetype longest = 8000;

/// Returns the text with "> " before each line and an empty line after it, without what nobody can
/// see. Of a longer text only the beginning. Empty if the text is blank.
QString ofText(const QString& text);

} // namespace pobblewig::Quotation
