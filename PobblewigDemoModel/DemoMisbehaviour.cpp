#include "PobblewigDemoModel/DemoMisbehaviour.h"

namespace pobblewig {

namespace {

DemoPlan claimWithoutCalling(const DemoSentence&)
{
    return { .sentence = QStringLiteral("I've queued a reminder for you. Confirm it in the app."),
        .afterNudge =
            QStringLiteral("Caught: I only said that there was something to confirm. "
                           "Nothing was called, so nothing waits for you. The app noticed "
                           "and asked me again.") };
}

DemoPlan sayNothing(const DemoSentence&)
{
    return { .afterNudge = QStringLiteral("That was an empty reply. The app noticed and asked me "
                                          "again.") };
}

} // namespace

const DemoRules& DemoMisbehaviour::rules()
{
    static const DemoRules all {
        { QStringLiteral(R"(^(?:pretend|claim|make up)\b)"), claimWithoutCalling },
        { QStringLiteral(R"(^say nothing\b)"), sayNothing },
    };
    return all;
}

} // namespace pobblewig
