#include "interventions/InterventionTexts.h"

#include "connections/ShortDate.h"
#include "foundation/Text.h"

#include <span>

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t situationRecords = 3;
constexpr qsizetype situationCharacters = 80;
constexpr auto correctionTime = std::chrono::hours(1);

QString outcomeOf(const InterventionRecord& record)
{
    return record.outcome ? u" [%1]"_s.arg(EnumNames::text(*record.outcome)) : QString();
}

struct Recent {
    const InterventionService& service;
    const Moment& moment;
};

Task<Tool::Outcome> listRecent(Recent recent, ToolArguments)
{
    co_return InterventionTexts::list(recent.service.records(), recent.moment.calendar());
}

} // namespace

std::vector<QString> InterventionTexts::situation(
    const std::vector<InterventionRecord>& records, TimePoint now)
{
    if (records.empty())
        return {};
    QStringList entries;
    for (const auto& record :
        std::span(records).first(std::min(records.size(), situationRecords))) {
        const auto text = Text::onOneLine(record.message);
        entries << Text::firstCharacters(text, situationCharacters) + outcomeOf(record);
    }
    std::vector lines { u"Recent proactive messages: "_s + entries.join(u" | "_s) };
    const auto& latest = records.front();
    if (latest.outcome == InterventionOutcome::contextCorrected
        && now - latest.firedAt < correctionTime)
        lines.push_back(
            u"The user says that your latest proactive message is wrong. Once they tell what is "
            "right, correct the memory: propose to forget what is wrong, and note what is right."_s);
    return lines;
}

QString InterventionTexts::list(
    const std::vector<InterventionRecord>& records, const Calendar& calendar)
{
    QStringList lines;
    for (const auto& record : records)
        lines << u"%1: %2"_s.arg(
                     shortDateTime(record.firedAt, calendar), Text::onOneLine(record.message))
                + outcomeOf(record);
    return lines.isEmpty() ? u"no proactive messages yet"_s : lines.join(u'\n');
}

std::vector<Tool> InterventionTexts::tools(const InterventionService& service, const Moment& moment)
{
    return { {
        .group = Tool::Group::situation,
        .name = u"interventions_recent"_s,
        .description = u"Recent proactive messages — deadline reminders and daily briefings — and "
                       "how the user responded."_s,
        .section = Tool::Section::situation,
        .instruction = u"interventions_recent {} — recent proactive messages and outcomes."_s,
        .run = Tool::runner(listRecent, Recent { service, moment }),
    } };
}

QString InterventionTexts::kind(const QString& triggerType)
{
    if (triggerType == u"canvas_deadline")
        return u"Canvas deadlines"_s;
    if (triggerType == u"classroom_deadline")
        return u"Google Classroom deadlines"_s;
    return triggerType == u"daily_briefing" ? u"Daily briefing"_s : triggerType;
}

QString InterventionTexts::style(InterventionStyle style)
{
    switch (style) {
    case InterventionStyle::gentle:
        return u"gentle and curious"_s;
    case InterventionStyle::direct:
        return u"direct and brief"_s;
    case InterventionStyle::playful:
        return u"light and playful"_s;
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
