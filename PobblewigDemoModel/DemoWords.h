#pragma once

#include <QRegularExpression>
#include <QString>

/// What is left of a sentence once its small words are gone.
namespace pobblewig::DemoWords {

/// A pattern of words of any language, in any case.
QRegularExpression pattern(const QString& text);

/// Without courtesies at either end: "could you please", "thanks".
QString withoutCourtesies(const QString& text);

/// As a heading: "to email Davis, please" is "Email Davis".
QString title(QString text);

/// For an id: the first words in lower case, joined by hyphens.
QString slug(const QString& text);

/// What is worth searching for. Empty if every word is a small one.
QString keywords(const QString& text);

} // namespace pobblewig::DemoWords
