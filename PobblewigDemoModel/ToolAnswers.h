#pragma once

#include "PobblewigDemoModel/DemoTurn.h"

#include <QStringList>

#include <optional>

/// Interprets the results of tools.
namespace pobblewig::ToolAnswers {

bool has(const DemoResults& results, const QString& tool);

/// The ids that appear as "[id:1a2b3c4d]" in the answer of a tool.
std::optional<QString> firstID(const DemoResults& results, const QString& tool);
std::optional<QString> lastID(const DemoResults& results, const QString& tool);

/// The texts of notes such as "- [id:1a2b3c4d] (goals) Wants to learn Welsh".
QStringList noteTexts(const DemoResults& results, const QString& tool);

/// A reply about the results. For a successful change it begins with the sentence that announced
/// it.
QString spoken(const DemoResults& results, const QString& sentence, bool hasScreenshot);

} // namespace pobblewig::ToolAnswers
