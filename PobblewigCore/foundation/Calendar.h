#pragma once

#include "foundation/Time.h"

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

namespace pobblewig {

/// The user's time zone and locale, and the words they give for days.
struct Calendar {
    QTimeZone timeZone = QTimeZone::utc();
    QLocale locale = QLocale::c();

    static Calendar current();

    QDateTime dateTime(TimePoint time) const;
    QDate day(TimePoint time) const { return dateTime(time).date(); }

    /// Day and time in words, such as "Friday, 27 November 2026, 09:00".
    QString moment(TimePoint time) const;
};

} // namespace pobblewig
