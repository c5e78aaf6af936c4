#include "conversation/proposals/ActionBuilder.h"

#include "conversation/proposals/ForgetTexts.h"
#include "foundation/Text.h"

#include <limits>

namespace pobblewig {

namespace {

using ActionBuilder::Actions;
using ActionBuilder::Request;

constexpr int defaultCooldownMinutes = 120;
constexpr int defaultModeMinutes = 60;
constexpr int mostModeMinutes = 8 * 60;

template <typename Enum>
std::optional<Enum> named(const std::optional<QString>& name)
{
    return name ? EnumNames::fromName<Enum>(name->toStdString()) : std::nullopt;
}

std::optional<RuleProposal> proposal(const Request& request, RuleProposal::Kind kind)
{
    const auto proposalId = request.line(QStringLiteral("proposalId"));
    if (!proposalId)
        return std::nullopt;
    RuleProposal made;
    made.proposalId = *proposalId;
    made.kind = kind;
    return made;
}

RuleProposal change(RuleProposal made, const QString& key, JSONValue value, const QString& subject)
{
    made.name = subject + QStringLiteral(" → ") + Text::onOneLine(value.displayString());
    made.settingsChange = ProposedSettingsChange { key, std::move(value) };
    return made;
}

std::set<CoachMode> modes(const std::vector<QString>& names)
{
    std::set<CoachMode> found;
    for (const auto& name : names) {
        if (const auto mode = named<CoachMode>(name))
            found.insert(*mode);
    }
    return found;
}

} // namespace

Actions ActionBuilder::proposedRule(const Request& request)
{
    constexpr auto lowest = std::numeric_limits<int>::min();
    constexpr auto highest = std::numeric_limits<int>::max();
    auto made = proposal(request, RuleProposal::Kind::rule);
    const auto rule = request.arguments.nested(QStringLiteral("rule"));
    const auto name = rule ? rule->line(QStringLiteral("name")) : std::nullopt;
    const auto threshold =
        rule ? rule->integer(QStringLiteral("thresholdMinutes"), lowest, highest) : std::nullopt;
    if (!made || !name || !threshold)
        return {};
    made->name = *name;
    made->applicationMatch = rule->conditions(QStringLiteral("applicationMatch"));
    made->bundleIDMatch = rule->conditions(QStringLiteral("bundleIDMatch"));
    made->domainMatch = rule->conditions(QStringLiteral("domainMatch"));
    made->thresholdMinutes = *threshold;
    made->excludedModes = modes(rule->conditions(QStringLiteral("excludedModes")));
    made->cooldownMinutes = rule->integer(QStringLiteral("cooldownMinutes"), lowest, highest)
                                .value_or(defaultCooldownMinutes);
    made->responseStyle = named<InterventionStyle>(rule->line(QStringLiteral("responseStyle")))
                              .value_or(InterventionStyle::gentle);
    return { *std::move(made) };
}

Actions ActionBuilder::proposedCalendarEvent(const Request& request)
{
    auto made = proposal(request, RuleProposal::Kind::calendarEvent);
    const auto title = request.line(QStringLiteral("title"));
    const auto start = request.date(QStringLiteral("start"));
    if (!made || !title || !start)
        return {};
    const auto end = request.date(QStringLiteral("end"));
    const auto endsLater = end && end->time >= start->time;
    made->name = *title;
    made->event = ProposedCalendarEvent {
        .title = *title,
        .start = start->time,
        .end = endsLater ? std::optional(end->time) : std::nullopt,
        .notes = request.arguments.notes(),
        .calendarName = request.line(QStringLiteral("calendarName")),
        .allDay = start->isDay,
    };
    return { *std::move(made) };
}

Actions ActionBuilder::proposedReminder(const Request& request)
{
    auto made = proposal(request, RuleProposal::Kind::reminder);
    const auto title = request.line(QStringLiteral("title"));
    if (!made || !title)
        return {};
    const auto due = request.date(QStringLiteral("due"));
    made->name = *title;
    made->reminder = ProposedReminder {
        .title = *title,
        .due = due ? std::optional(due->time) : std::nullopt,
        .notes = request.arguments.notes(),
        .allDay = due && due->isDay,
    };
    return { *std::move(made) };
}

Actions ActionBuilder::updatedSettings(const Request& request)
{
    auto made = proposal(request, RuleProposal::Kind::settingsChange);
    const auto key = request.line(QStringLiteral("key"));
    auto value = request.arguments.settingValue(QStringLiteral("value"));
    if (!made || !key || !value)
        return {};
    return { change(*std::move(made), *key, *std::move(value), *key) };
}

Actions ActionBuilder::newPersona(const Request& request)
{
    auto made = proposal(request, RuleProposal::Kind::settingsChange);
    const auto persona = request.line(QStringLiteral("persona"));
    if (!made || !persona)
        return {};
    made->name = QStringLiteral("persona ") + *persona;
    made->settingsChange = ProposedSettingsChange { QStringLiteral("companionPersona"), *persona };
    return { *std::move(made) };
}

Actions ActionBuilder::newMascot(const Request& request)
{
    auto made = proposal(request, RuleProposal::Kind::settingsChange);
    const auto mascot = request.line(QStringLiteral("mascot"));
    if (!made || !mascot)
        return {};
    auto form = change(*made, QStringLiteral("mascot"), *mascot, QStringLiteral("form"));
    const auto scheme = request.line(QStringLiteral("colorScheme"));
    if (!scheme)
        return { std::move(form) };
    made->proposalId += QStringLiteral("-scheme");
    auto colors = change(*std::move(made), QStringLiteral("mascotColorScheme"), *scheme,
        QStringLiteral("color scheme"));
    return { std::move(form), std::move(colors) };
}

Actions ActionBuilder::forgottenMemory(const Request& request)
{
    auto made = proposal(request, RuleProposal::Kind::forgetMemory);
    const auto target = named<ProposedForget::Target>(request.line(QStringLiteral("target")));
    if (!made || !target)
        return {};
    auto tags = request.arguments.conditions(QStringLiteral("tags"));
    ProposedForget forget {
        .target = *target,
        .id = request.line(QStringLiteral("id")),
        .path = request.line(QStringLiteral("path")),
        .query = request.arguments.condition(QStringLiteral("query")),
        .from = request.arguments.condition(QStringLiteral("from")),
        .to = request.arguments.condition(QStringLiteral("to")),
        .tags = tags.empty() ? std::nullopt : std::optional(std::move(tags)),
    };
    forget.summary = ForgetTexts::summary(forget);
    made->name = forget.summary;
    made->forget = std::move(forget);
    return { *std::move(made) };
}

Actions ActionBuilder::temporaryMode(const Request& request)
{
    const auto mode = named<CoachMode>(request.line(QStringLiteral("mode")));
    if (!mode)
        return {};
    const auto minutes = request.arguments.integer(QStringLiteral("minutes"), 1, mostModeMinutes);
    return { TemporaryMode { *mode, minutes.value_or(defaultModeMinutes) } };
}

} // namespace pobblewig
