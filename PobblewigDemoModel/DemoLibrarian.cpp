#include "PobblewigDemoModel/DemoLibrarian.h"

#include "PobblewigDemoModel/DemoCleanup.h"
#include "PobblewigDemoModel/DemoCloseout.h"
#include "PobblewigDemoModel/DemoExtraction.h"
#include "PobblewigDemoModel/DemoReactions.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

constexpr qsizetype longestOpening = 250;

struct Job {
    QStringView schema;
    /// A text in the first sentences of the prompt.
    QStringView task;
    JSONValue (*answer)(const QString& prompt, const QDateTime& now);
};

JSONValue ofWeek(const QString& prompt, const QDateTime&)
{
    return DemoCloseout::ofWeek(prompt);
}

constexpr std::array jobs {
    Job { u"librarian_extraction", u"from a personal-companion conversation",
        DemoExtraction::fromConversation },
    Job { u"meeting_notes_extraction", u"from the final notes of a recorded meeting",
        DemoExtraction::fromMeeting },
    Job { u"daily_closeout", u"closing out one daily session", DemoCloseout::ofDay },
    Job { u"weekly_rollup", u"summarizing one week of daily summaries", ofWeek },
    Job {
        u"memory_cleanup", u"Clean and organize the user's memory notes", DemoCleanup::rewritten },
    Job { u"meme_reaction", u"reaction instinct of a small desktop pet", DemoReactions::judged },
};

bool isFor(const Job& job, const ChatResponseFormat& format, const QString& prompt)
{
    if (format.jsonSchema)
        return format.jsonSchema->name == job.schema;
    return prompt.startsWith(u"You are the ") && prompt.left(longestOpening).contains(job.task);
}

} // namespace

std::optional<JSONValue> DemoLibrarian::answer(const ChatRequest& request, const QDateTime& now)
{
    if (!request.responseFormat)
        return std::nullopt;
    const auto prompt = request.messages.back().text();
    const auto job = std::ranges::find_if(
        jobs, [&](const auto& each) { return isFor(each, *request.responseFormat, prompt); });
    return job == jobs.end() ? std::nullopt : std::optional(job->answer(prompt, now));
}

} // namespace pobblewig
