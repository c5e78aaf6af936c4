#pragma once

#include "PobblewigDemoModel/DemoTurn.h"

#include <QStringList>

#include <optional>

/// What can be read off the results of tools.
namespace pobblewig::ToolAnswers {

bool has(const DemoResults& results, const QString& tool);

/// The ids that stand as "[id:1a2b3c4d]" in what a tool answered.
std::optional<QString> firstID(const DemoResults& results, const QString& tool);
std::optional<QString> lastID(const DemoResults& results, const QString& tool);

/// The notes in "- [id:1a2b3c4d] (goals) Wants to learn Welsh".
QStringList noteTexts(const DemoResults& results, const QString& tool);

/// What to say about them. A change that worked is told with the sentence that announced it.
QString spoken(const DemoResults& results, const QString& sentence, bool hasScreenshot);

} // namespace pobblewig::ToolAnswers
