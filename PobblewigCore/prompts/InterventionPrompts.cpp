#include "prompts/InterventionPrompts.h"

#include "prompts/PersonaPrompts.h"

namespace pobblewig {

namespace {

using InterventionPrompts::Background;
using InterventionPrompts::Briefing;

QString section(const QString& heading, const QString& text)
{
    return text.isEmpty() ? QString() : QStringLiteral("\n\n%1:\n").arg(heading) + text;
}

QString voice(const Background& background)
{
    return PersonaPrompts::interventionVoiceNote(background.persona).toString();
}

QString context(const Background& background)
{
    return section(QStringLiteral("Relevant memory"), background.memory)
        + section(QStringLiteral("Recent conversation"), background.conversation);
}

QString task(const Briefing& briefing)
{
    const auto isClear =
        briefing.deadlines.isEmpty() && briefing.events.isEmpty() && briefing.reminders.isEmpty();
    if (isClear)
        return QStringLiteral("Nothing is due and the schedule is clear: one warm clear-day line, "
                              "no invented items, no filler.");
    auto lead =
        QStringLiteral("Lead with what's due today or tonight, then today's remaining events and "
                       "any due reminders. Plain and compact — an opener, not a lecture.");
    if (briefing.more <= 0)
        return lead;
    return lead
        + QStringLiteral(" End with one short teaser line in your own words: %1 more due this week "
                         "— ask if you want the rundown.")
              .arg(briefing.more);
}

} // namespace

QString InterventionPrompts::checkin(const RuleCheckin& checkin, const Background& background)
{
    auto prompt = QStringLiteral(
        "Compose ONE brief accountability check-in (1-3 sentences, %1) for this situation:\n\nThe "
        "rule \"%2\" fired: the user has had %3 active for about %4 minutes. Current mode: %5.")
                      .arg(checkin.style, checkin.rule, checkin.subject,
                          QString::number(checkin.minutes), checkin.mode);
    if (checkin.lastOutcome)
        prompt +=
            QStringLiteral(" The last similar check-in was %1 by the user — adjust accordingly.")
                .arg(*checkin.lastOutcome);
    prompt += QStringLiteral(
        "\n\nAsk before judging — this may be intentional downtime, exercise, or study. Do not "
        "lecture. Do not repeat yourself. Offer an easy way out (\"if this is intentional, tell me "
        "and I'll back off\").");
    return prompt + voice(background) + context(background);
}

QString InterventionPrompts::deadline(const Deadline& deadline, const Background& background)
{
    const auto course =
        deadline.course.isEmpty() ? QString() : QStringLiteral(" for %1").arg(deadline.course);
    auto prompt = QStringLiteral(
        "Compose ONE brief reminder (1-3 sentences, gentle and curious) for this situation:\n\nA "
        "%1 "
        "deadline is close: \"%2\"%3 is due %4 (about %5 hours left) and nothing is submitted yet. "
        "Current mode: %6")
                      .arg(deadline.service, deadline.title, course, deadline.due,
                          QString::number(deadline.hours), deadline.mode);
    prompt += QStringLiteral(
        ".\nThis is a heads-up, not a scolding — the user may already have a plan, be mid-work, or "
        "have an extension. Mention the assignment and time left plainly, ask if they're on top of "
        "it, and offer an easy way out (\"if you've got this handled, tell me and I'll back "
        "off\"). "
        "Do not lecture.");
    return prompt + voice(background) + context(background)
        + QStringLiteral("\n\nReply with only the reminder text.");
}

QString InterventionPrompts::briefing(const Briefing& briefing, const Background& background)
{
    const auto opening =
        QStringLiteral("Compose the user's daily briefing: a short opener (1-4 sentences) in your "
                       "own voice. It is "
                       "the first thing you say to the user today — they just opened chat.\n\n");
    return opening + task(briefing) + voice(background)
        + section(QStringLiteral("Canvas deadlines due in the next 48 hours"), briefing.deadlines)
        + section(QStringLiteral("Today's remaining calendar events"), briefing.events)
        + section(QStringLiteral("Reminders due in the next 24 hours"), briefing.reminders)
        + context(background) + QStringLiteral("\n\nReply with only the briefing text.");
}

} // namespace pobblewig
