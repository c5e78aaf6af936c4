#pragma once

#include "PobblewigDesktop/diagnostics/DiagnosticsReport.h"

namespace pobblewig {

/// What the diagnostics tell, in words.
namespace DiagnosticsTexts {

/// A day and a time in the user's form.
QString time(TimePoint at, const Calendar& calendar);

/// A line below each other; a list without lines says `none`.
QString lines(const QStringList& lines, const QString& none = {});

QString storage(const StorageState& storage);
QString librarian(const DiagnosticsInfo& info, const Calendar& calendar);

/// The columns of a table of requests, and a row of it.
QStringList requestColumns();
QStringList request(const RequestRecord& request, const Calendar& calendar);

} // namespace DiagnosticsTexts

} // namespace pobblewig
