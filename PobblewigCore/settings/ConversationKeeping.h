#pragma once

#include <QString>

namespace pobblewig {

/// How long conversations are kept.
enum class ConversationKeeping { year, month, lastMessages };

/// For how many days; none if only the latest messages are kept.
constexpr int daysKept(ConversationKeeping keeping)
{
    constexpr int days[] { 365, 30, 0 };
    return days[int(keeping)];
}

/// The name for the user.
QString displayName(ConversationKeeping keeping);

} // namespace pobblewig
