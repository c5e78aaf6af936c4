#pragma once

#include "conversation/ChatProblem.h"
#include "wire/LLMError.h"

/// Says what a failure means for the user.
namespace pobblewig::ProblemLogic {

struct Circumstances {
    AskedModel asked;
    /// Where the user's models are described.
    QString environmentFile;
    TimePoint now;
};

inline constexpr size_t mostModels = 8;

ChatProblem problem(const LLMFailure& failure, const Circumstances& circumstances);

/// No model is set up. The details are the lines to write.
ChatProblem noModel(const QString& environmentFile);

/// Whether the same request may succeed a moment later.
bool isWorthRetrying(const LLMError& error);

/// Whether the list of the server's models would help.
bool concernsModel(const LLMFailure& failure, const AskedModel& asked);

/// Offers the server's models for the one that it does not have, the most similar names first.
/// Leaves a problem as it is if the server does have that model, or tells of none.
ChatProblem offering(
    ChatProblem problem, std::vector<QString> models, const Circumstances& circumstances);

/// The moment in a "Retry-After" header, which is a number of seconds or a date. Returns nothing
/// for anything else, and for more than a day.
std::optional<TimePoint> retryTime(const QByteArray& retryAfter, TimePoint now);

/// The seconds until the problem's `retryAt`, at least 0.
int secondsLeft(const ChatProblem& problem, TimePoint now);

struct Wait {
    TimePoint since;
    /// Whether the user has typed in the meantime.
    bool hasTyped = false;
    /// How many retries in a row nobody has asked for.
    int earlierRetries = 0;
};

/// Whether a wait ends with a retry that nobody has to ask for.
bool retriesByItself(const ChatProblem& problem, const Wait& wait);

} // namespace pobblewig::ProblemLogic
