#include "PobblewigDemoModel/DemoReminders.h"

#include "PobblewigDemoModel/DemoDates.h"
#include "PobblewigDemoModel/DemoWords.h"

namespace pobblewig {

namespace {

constexpr int usualMinutes = 60;

QString proposalID(const QString& kind, const QString& title, QDate day)
{
    const QStringList parts { kind, DemoWords::slug(title),
        day.toString(QStringLiteral("yyyyMMdd")) };
    return parts.join(u'-').replace(QStringLiteral("--"), QStringLiteral("-"));
}

DemoPlan remind(const DemoSentence& sentence)
{
    const auto [due, rest] = DemoDates::readTime(sentence.part(u"what"), sentence.now);
    const auto title = DemoWords::title(rest);
    if (title.isEmpty())
        return { QStringLiteral("Remind you of what? Say, for example: \"Remind me to email Davis "
                                "tomorrow at 9.\"") };
    const auto day = due.value_or(sentence.now).date();
    DemoToolCall call { QStringLiteral("propose_reminder"),
        { { QStringLiteral("proposalId"), proposalID(QStringLiteral("rem"), title, day) },
            { QStringLiteral("title"), title } } };
    if (!due)
        return { QStringLiteral("A reminder: \"%1\".").arg(title), { call } };
    call.arguments[QStringLiteral("due")] = DemoDates::format(*due);
    return { QStringLiteral("A reminder: \"%1\", %2.").arg(title, DemoDates::spoken(*due)),
        { call } };
}

DemoPlan addEvent(const DemoSentence& sentence)
{
    const auto text = sentence.part(u"what") + u' ' + sentence.part(u"more");
    const auto minutes = DemoDates::readMinutes(text).value_or(usualMinutes);
    const auto [start, rest] = DemoDates::readTime(DemoDates::withoutMinutes(text), sentence.now);
    const auto title = DemoWords::title(rest);
    if (!start || title.isEmpty())
        return { QStringLiteral("What, and when? Say, for example: \"Put dentist on Friday at 3pm "
                                "in my calendar.\"") };
    const DemoToolCall call { QStringLiteral("propose_calendar_event"),
        { { QStringLiteral("proposalId"),
              proposalID(QStringLiteral("event"), title, start->date()) },
            { QStringLiteral("title"), title },
            { QStringLiteral("start"), DemoDates::format(*start) },
            { QStringLiteral("end"), DemoDates::format(start->addSecs(60 * minutes)) } } };
    return { QStringLiteral("For your calendar: \"%1\", %2.").arg(title, DemoDates::spoken(*start)),
        { call } };
}

} // namespace

const DemoRules& DemoReminders::rules()
{
    static const DemoRules all {
        { QStringLiteral(
              R"(^(?:remind me|set (?:me )?a reminder|don'?t let me forget)\b(?<what>.*))"),
            remind },
        { QStringLiteral(
              R"(^(?:put|add) (?<what>.+) (?:in|on|into|to) (?:my |the )?calendar\b(?<more>.*))"),
            addEvent },
        { QStringLiteral(R"(^(?:schedule|book) (?<what>.+)(?<more>))"), addEvent },
    };
    return all;
}

} // namespace pobblewig
