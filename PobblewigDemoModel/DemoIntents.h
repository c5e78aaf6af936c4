#pragma once

#include "PobblewigDemoModel/DemoMaterial.h"

#include <QStringList>

/// What the user still means to do.
namespace pobblewig::DemoIntents {

struct Intent {
    QString text;
    QString kind = QStringLiteral("task");
};

/// Nothing for what dies with its day, such as a lunch.
std::optional<Intent> intentIn(const DemoMaterial::Line& statement);

/// The earlier ones and those of the day, without what the user says is done and without what has
/// been over for a week.
std::vector<Intent> openAfter(const QStringList& earlier,
    const std::vector<DemoMaterial::Line>& statements, const QDateTime& now);

} // namespace pobblewig::DemoIntents
