#pragma once

#include "connections/ComingUpEntry.h"
#include "foundation/Calendar.h"

#include <QString>

/// The words for what is coming up.
namespace pobblewig::ComingUpTexts {

/// "Overdue", "Today", "Wednesday 25 November", "Some time".
QString heading(const ComingUpSection& section, QDate today, const QLocale& locale);

/// When it is on its day, or with the day what is overdue; empty without a date.
QString time(const ComingUpEntry& entry, ComingUpSection::Kind section, QDate today,
    const Calendar& calendar);

/// Where it belongs, its points and whether it is done.
QString detail(const ComingUpEntry& entry, const QLocale& locale);

} // namespace pobblewig::ComingUpTexts
