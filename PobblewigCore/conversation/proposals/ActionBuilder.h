#pragma once

#include "conversation/proposals/ActionArguments.h"
#include "conversation/proposals/BuddyAction.h"

#include <vector>

/// From the name of an action and its arguments to what is to be done. Whether a model called a
/// function or wrote a block makes a difference in one respect only.
namespace pobblewig::ActionBuilder {

enum class Origin {
    block,
    /// The minutes of a mode are then moved into what a user could set.
    toolCall,
};

/// None if the name is unknown or something required is absent.
std::vector<BuddyAction> actions(
    const QString& type, const ActionArguments& arguments, const Calendar& calendar, Origin origin);

} // namespace pobblewig::ActionBuilder
