#pragma once

#include "foundation/Calendar.h"
#include "interventions/InterventionRecord.h"
#include "interventions/Occupation.h"
#include "settings/CoachMode.h"

/// Decides when the companion may speak first.
namespace pobblewig::ProactiveLogic {

constexpr int mostMessagesPerDay = 4;

/// Why nothing is said.
enum class Silence { paused, doNotDisturb, fullScreen, call, enoughForToday, unwelcome };

struct Circumstances {
    TimePoint now;
    const Calendar& calendar;
    bool isPaused = false;
    CoachMode mode = CoachMode::openEnded;
    Occupation occupation = Occupation::none;
    /// Newest first.
    const std::vector<InterventionRecord>& records;
};

/// Returns nothing if a message of this kind may be sent.
std::optional<Silence> silence(const QString& triggerType, const Circumstances& circumstances);

/// Whether the latest message is so new that the user may just be about to answer it.
bool waitsForAnswer(const std::vector<InterventionRecord>& records, TimePoint now);

/// For Diagnostics, such as "observation is paused".
QString inWords(Silence silence);

/// What a quick answer to a message can be.
enum class QuickAnswer { gotIt, notNow, thatsWrong, remindLater };

InterventionOutcome outcome(QuickAnswer answer);

/// The words of the answer, as on its button.
QString inWords(QuickAnswer answer);

/// When a message that is put off comes again: in 2 hours, or half way to its deadline if that is
/// sooner.
TimePoint snoozedUntil(const InterventionRecord& record, TimePoint now);

/// The reminded keys as they count at this time: without those whose message was put off and is due
/// again.
std::set<QString> remindedKeys(
    const std::set<QString>& keys, const std::vector<InterventionRecord>& records, TimePoint now);

/// The message about this deadline that was put off and is due again, if there is one.
const InterventionRecord* putOff(
    const std::vector<InterventionRecord>& records, const QString& reminderKey, TimePoint now);

/// Whether the user has settled what this deadline is about: taken note, or said that it is wrong.
/// A new due date begins anew. The key may be of any day.
bool isSettled(const std::vector<InterventionRecord>& records, const QString& reminderKey,
    TimePoint dueAt, TimePoint now);

} // namespace pobblewig::ProactiveLogic
