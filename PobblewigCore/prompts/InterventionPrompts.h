#pragma once

#include "settings/CompanionPersona.h"

#include <QString>

#include <optional>

/// The requests for a message that the companion begins.
namespace pobblewig::InterventionPrompts {

/// What every such request ends with.
struct Background {
    CompanionPersona persona = CompanionPersona::classic;
    QString memory;
    /// The latest messages, one on each line.
    QString conversation;
};

struct RuleCheckin {
    QString rule;
    /// The application in front.
    QString subject;
    int minutes = 0;
    QString mode;
    /// Such as "gentle and curious".
    QString style;
    /// The outcome of the last message about the same rule.
    std::optional<QString> lastOutcome;
};

QString checkin(const RuleCheckin& checkin, const Background& background);

struct Deadline {
    /// "Canvas" or "Google Classroom".
    QString service;
    QString title;
    /// Empty if it is not known.
    QString course;
    /// Day and time.
    QString due;
    qint64 hours = 0;
    QString mode;
};

QString deadline(const Deadline& deadline, const Background& background);

/// The lists of a day, each with its items one on each line; empty ones are not mentioned.
struct Briefing {
    QString deadlines;
    QString events;
    QString reminders;
    /// Deadlines of the week that the list does not show.
    qsizetype more = 0;
};

QString briefing(const Briefing& briefing, const Background& background);

} // namespace pobblewig::InterventionPrompts
