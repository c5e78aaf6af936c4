#pragma once

#include "conversation/ProblemLogic.h"

/// What happened and what to do, for each kind of problem.
namespace pobblewig::ProblemTexts {

using ProblemLogic::Circumstances;

ChatProblem noModel(const QString& environmentFile);
ChatProblem keyRefused(const Circumstances& at);
ChatProblem notAllowed(const Circumstances& at);
ChatProblem noCredit(const Circumstances& at);
ChatProblem tooManyRequests(const Circumstances& at);
ChatProblem modelUnknown(const Circumstances& at);
/// Where the server has told its models.
QString modelAdvice();
ChatProblem nothingThere(const Circumstances& at);
ChatProblem refused(int status, const Circumstances& at);
ChatProblem serverTrouble(int status, const Circumstances& at);

ChatProblem conversationTooLong();
ChatProblem tooLarge(const Circumstances& at);
ChatProblem cannotSee(const Circumstances& at);
ChatProblem stillLoading();
ChatProblem onlyThought(const Circumstances& at);

/// A web page, or the way to one, in place of an answer.
ChatProblem page(const Circumstances& at);
/// The answer is no reply of a model.
ChatProblem noReply(const Circumstances& at);
/// The server reported an error in the middle of the reply.
ChatProblem brokeOff(const Circumstances& at);
ChatProblem noAnswer(const Circumstances& at);
ChatProblem proxyRefuses(const Circumstances& at);
ChatProblem transport(TransportError::Kind kind, const Circumstances& at);

/// The advice while so many seconds are left.
QString waitAdvice(int seconds, bool retriesByItself);

} // namespace pobblewig::ProblemTexts
