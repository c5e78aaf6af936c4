#pragma once

#include "TermFiles.h"
#include "TermLedger.h"
#include "TermScript.h"

/// What has to hold at the end of a term. Each answers with a sentence for each fault.
namespace pobblewig::TermChecks {

/// Each day of the script has its session, and each but the last is closed by one summary.
QStringList sessions(const TermFiles& files, const TermRecord& record, const Term& days);

/// Each day begins after the end of the one before, and what was observed lies in its day.
QStringList times(const TermFiles& files);

/// Each seven days make one week, in order.
QStringList weeks(const TermFiles& files);

/// Each message that was said stands in one archive or in the conversation, once.
QStringList messages(const TermFiles& files, const TermRecord& record);

/// Nothing but the stores, each whole; what was observed stands in its day's summary.
QStringList contents(const TermFiles& files);

/// What was said while the memory was off went to no librarian and into no store.
QStringList memoryOff(const TermFiles& files, const TermRecord& record);

/// The program was killed at each step of a rollover.
QStringList crashes(const TermRecord& record);

} // namespace pobblewig::TermChecks
