#pragma once

#include "activity/AccountabilityRule.h"
#include "foundation/JSONValue.h"

namespace pobblewig {

struct ProposedCalendarEvent {
    QString title;
    TimePoint start;
    std::optional<TimePoint> end = std::nullopt;
    std::optional<QString> notes = std::nullopt;
    std::optional<QString> calendarName = std::nullopt;
    bool allDay = false;

    bool operator==(const ProposedCalendarEvent&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using T = ProposedCalendarEvent;
        return std::tuple { required("title", &T::title), required("start", &T::start),
            optional("end", &T::end), optional("notes", &T::notes),
            optional("calendarName", &T::calendarName), defaulted("allDay", &T::allDay) };
    }
};

struct ProposedReminder {
    QString title;
    std::optional<TimePoint> due = std::nullopt;
    std::optional<QString> notes = std::nullopt;
    /// Due on that day, at no particular time.
    bool allDay = false;

    bool operator==(const ProposedReminder&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using T = ProposedReminder;
        return std::tuple { required("title", &T::title), optional("due", &T::due),
            optional("notes", &T::notes), defaulted("allDay", &T::allDay) };
    }
};

struct ProposedSettingsChange {
    QString key;
    JSONValue value;

    bool operator==(const ProposedSettingsChange&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("key", &ProposedSettingsChange::key),
            defaulted("value", &ProposedSettingsChange::value) };
    }
};

/// What to delete from memory. Which fields count depends on the target.
struct ProposedForget {
    enum class Target { note, referenceItem, referenceSection, observations };

    Target target = Target::note;
    /// A short id as the tools print it, or a full id.
    std::optional<QString> id = std::nullopt;
    std::optional<QString> path = std::nullopt;
    std::optional<QString> query = std::nullopt;
    /// The bounds as the model wrote them.
    std::optional<QString> from = std::nullopt;
    std::optional<QString> to = std::nullopt;
    std::optional<std::vector<QString>> tags = std::nullopt;
    /// A description as text.
    QString summary;

    bool operator==(const ProposedForget&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using T = ProposedForget;
        return std::tuple { required("target", &T::target), optional("id", &T::id),
            optional("path", &T::path), optional("query", &T::query), optional("from", &T::from),
            optional("to", &T::to), optional("tags", &T::tags), required("summary", &T::summary) };
    }
};

/// A change that the model asked for, and its status.
struct RuleProposal {
    enum class Kind { rule, calendarEvent, reminder, settingsChange, forgetMemory };
    enum class Status { pending, confirmed, rejected };

    QUuid id;
    /// The model's own name for it, by which it is found everywhere.
    QString proposalId;
    Kind kind = Kind::rule;
    /// One line for the user.
    QString name;
    /// The fields up to `responseStyle` belong to a rule.
    std::vector<QString> applicationMatch;
    std::vector<QString> bundleIDMatch;
    std::vector<QString> domainMatch;
    int thresholdMinutes = 0;
    std::set<CoachMode> excludedModes;
    int cooldownMinutes = 0;
    InterventionStyle responseStyle = InterventionStyle::gentle;
    Status status = Status::pending;
    TimePoint createdAt;
    /// When the user answered it.
    std::optional<TimePoint> settledAt = std::nullopt;
    /// The settings that a confirmed change replaced, as "settings.json" has them.
    std::optional<std::map<QString, JSONValue>> replaced = std::nullopt;
    /// When the user took the confirmed change back.
    std::optional<TimePoint> undoneAt = std::nullopt;
    /// The one that belongs to the kind is set.
    std::optional<ProposedCalendarEvent> event = std::nullopt;
    std::optional<ProposedReminder> reminder = std::nullopt;
    std::optional<ProposedSettingsChange> settingsChange = std::nullopt;
    std::optional<ProposedForget> forget = std::nullopt;

    bool operator==(const RuleProposal&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using T = RuleProposal;
        return std::tuple { required("id", &T::id), required("proposalId", &T::proposalId),
            required("kind", &T::kind), required("name", &T::name),
            defaulted("applicationMatch", &T::applicationMatch),
            defaulted("bundleIDMatch", &T::bundleIDMatch),
            defaulted("domainMatch", &T::domainMatch),
            defaulted("thresholdMinutes", &T::thresholdMinutes),
            defaulted("excludedModes", &T::excludedModes),
            defaulted("cooldownMinutes", &T::cooldownMinutes),
            defaulted("responseStyle", &T::responseStyle), required("status", &T::status),
            required("createdAt", &T::createdAt), optional("settledAt", &T::settledAt),
            optional("replaced", &T::replaced), optional("undoneAt", &T::undoneAt),
            optional("event", &T::event), optional("reminder", &T::reminder),
            optional("settingsChange", &T::settingsChange), optional("forget", &T::forget) };
    }
};

} // namespace pobblewig
