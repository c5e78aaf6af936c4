#pragma once

#include "foundation/JSONValue.h"

#include <QDateTime>

/// Summarises days and weeks by rules.
namespace pobblewig::DemoCloseout {

JSONValue ofDay(const QString& prompt, const QDateTime& now);
JSONValue ofWeek(const QString& prompt);

} // namespace pobblewig::DemoCloseout
