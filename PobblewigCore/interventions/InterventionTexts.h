#pragma once

#include "activity/AccountabilityRule.h"
#include "foundation/Moment.h"
#include "interventions/InterventionService.h"
#include "tools/Tool.h"

/// What a model is told of the messages that the companion began.
namespace pobblewig::InterventionTexts {

/// The latest three, and whether the user has just called one of them wrong.
std::vector<QString> situation(const std::vector<InterventionRecord>& records, TimePoint now);

/// One line for each, newest first.
QString list(const std::vector<InterventionRecord>& records, const Calendar& calendar);

/// `interventions_recent`. Both must outlive it.
std::vector<Tool> tools(const InterventionService& service, const Moment& moment);

/// The kind of message in words, such as "Daily briefing".
QString kind(const QString& triggerType);

/// Such as "gentle and curious".
QString style(InterventionStyle style);

} // namespace pobblewig::InterventionTexts
