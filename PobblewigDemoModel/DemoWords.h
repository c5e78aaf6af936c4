#pragma once

#include <QRegularExpression>
#include <QString>

/// Extracts the significant words of a sentence.
namespace pobblewig::DemoWords {

/// A pattern for words of any language, ignoring case.
QRegularExpression pattern(const QString& text);

/// Removes courtesies at both ends: "could you please", "thanks".
QString withoutCourtesies(const QString& text);

/// A heading, such as "Email Davis" for "to email Davis, please".
QString title(QString text);

/// An id: the first words in lower case, joined by hyphens.
QString slug(const QString& text);

/// The words worth searching for; empty if there are only small words.
QString keywords(const QString& text);

} // namespace pobblewig::DemoWords
