#pragma once

#include "PobblewigDemoModel/DemoMaterial.h"

#include <QStringList>

/// What the user still plans to do.
namespace pobblewig::DemoIntents {

struct Intent {
    QString text;
    QString kind = QStringLiteral("task");
};

/// Returns nothing for plans that end with the day, such as a lunch.
std::optional<Intent> intentIn(const DemoMaterial::Line& statement);

/// The earlier intents and those of the day, without those that the user reports as done and those
/// that ended more than a week ago.
std::vector<Intent> openAfter(const QStringList& earlier,
    const std::vector<DemoMaterial::Line>& statements, const QDateTime& now);

} // namespace pobblewig::DemoIntents
