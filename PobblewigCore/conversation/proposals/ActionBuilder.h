#pragma once

#include "conversation/proposals/ActionArguments.h"
#include "conversation/proposals/BuddyAction.h"

#include <vector>

/// Turns the arguments of an action into actions, or into none if a required argument is absent.
namespace pobblewig::ActionBuilder {

using Actions = std::vector<BuddyAction>;

struct Request {
    const ActionArguments& arguments;
    const Calendar& calendar;

    std::optional<QString> line(const QString& name) const { return arguments.line(name); }
    std::optional<GivenTime> date(const QString& name) const
    {
        return arguments.date(name, calendar);
    }
};

Actions proposedRule(const Request& request);
Actions proposedCalendarEvent(const Request& request);
Actions proposedReminder(const Request& request);
Actions updatedSettings(const Request& request);
Actions newPersona(const Request& request);

/// A change of colours is a separate proposal, since the user answers each on its own.
Actions newMascot(const Request& request);
Actions forgottenMemory(const Request& request);
/// For at most eight hours, since the user is not asked.
Actions temporaryMode(const Request& request);

} // namespace pobblewig::ActionBuilder
