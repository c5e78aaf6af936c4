#pragma once

#include "conversation/proposals/ActionArguments.h"
#include "conversation/proposals/BuddyAction.h"

#include <vector>

/// From the arguments of an action to what is to be done: nothing if something required is absent.
/// Whether a model called a function or wrote a block makes a difference in one respect only.
namespace pobblewig::ActionBuilder {

using Actions = std::vector<BuddyAction>;

enum class Origin {
    block,
    /// The minutes of a mode are then moved into what a user could set.
    toolCall,
};

struct Request {
    const ActionArguments& arguments;
    const Calendar& calendar;
    Origin origin = Origin::block;

    std::optional<QString> line(const QString& name) const { return arguments.line(name); }
    std::optional<TimePoint> date(const QString& name) const
    {
        return arguments.date(name, calendar);
    }
};

Actions proposedRule(const Request& request);
Actions proposedCalendarEvent(const Request& request);
Actions proposedReminder(const Request& request);
Actions updatedSettings(const Request& request);
Actions newPersona(const Request& request);

/// The colours are a proposal of their own, since the user answers each by itself.
Actions newMascot(const Request& request);
Actions forgottenMemory(const Request& request);
Actions temporaryMode(const Request& request);

} // namespace pobblewig::ActionBuilder
