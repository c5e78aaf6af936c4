#pragma once

#include "foundation/Calendar.h"
#include "memory/history/ChatMessage.h"
#include "memory/librarian/LibrarianAnswers.h"

/// Prepares what the librarian reads, and replaces its answers where there is no model.
namespace pobblewig::LibrarianLogic {

/// "[2026-03-01T08:15:00Z] user: …" for each message by the user or the assistant, one line each;
/// long ones are cut. Leaves out messages written while the memory was off.
QString windowText(const std::vector<ChatMessage>& messages);
QString observationsText(const std::vector<DatedObservation>& observations);
QString dailiesText(const std::vector<PeriodSummary>& dailies, const Calendar& calendar);

/// The messages after the last one seen, or all of them if that one is gone.
std::vector<ChatMessage> messagesAfter(
    const std::vector<ChatMessage>& messages, const std::optional<QUuid>& lastExtractedMessageID);

/// Whether the user said anything that the librarian may read.
bool hasReadableUserMessage(const std::vector<ChatMessage>& messages);

/// What the model left out, as it would be without a model. With a summary of its own, an answer is
/// complete.
DailyCloseout completed(DailyCloseout answer, DailyCloseout withoutModel);

/// The summary of a day without a model: honest, short, and with the unfinished items of the
/// previous day.
DailyCloseout deterministicCloseout(const std::vector<ChatMessage>& window,
    const std::vector<DatedObservation>& observations, const std::vector<QString>& previousIntent);
WeeklyRollupResult deterministicWeekly(
    const std::vector<PeriodSummary>& dailies, const Calendar& calendar);

} // namespace pobblewig::LibrarianLogic
