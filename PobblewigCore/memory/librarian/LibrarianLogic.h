#pragma once

#include "foundation/Calendar.h"
#include "memory/history/ChatMessage.h"
#include "memory/librarian/LibrarianAnswers.h"

/// What the librarian reads, and what stands in for it where there is no model.
namespace pobblewig::LibrarianLogic {

/// "[2026-03-01T08:15:00Z] user: …" for each message of the two, on one line each; a very long one
/// is cut. What was said while the memory was off is not there.
QString windowText(const std::vector<ChatMessage>& messages);
QString observationsText(const std::vector<DatedObservation>& observations);
QString dailiesText(const std::vector<PeriodSummary>& dailies, const Calendar& calendar);

/// The messages after the one that was seen last; all of them if that one is gone.
std::vector<ChatMessage> messagesAfter(
    const std::vector<ChatMessage>& messages, const std::optional<QUuid>& lastExtractedMessageID);

/// The account of a day that no model has read: honest, short, and with the open ends of the day
/// before.
DailyCloseout deterministicCloseout(const std::vector<ChatMessage>& window,
    const std::vector<DatedObservation>& observations, const std::vector<QString>& previousIntent);
WeeklyRollupResult deterministicWeekly(
    const std::vector<PeriodSummary>& dailies, const Calendar& calendar);

} // namespace pobblewig::LibrarianLogic
