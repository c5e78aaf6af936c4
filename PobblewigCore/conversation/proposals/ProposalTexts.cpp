#include "conversation/proposals/ProposalTexts.h"

#include "conversation/proposals/FolderWarnings.h"
#include "conversation/proposals/ProposalLogic.h"
#include "foundation/Text.h"
#include "settings/SettingTexts.h"
#include "settings/SettingsDifference.h"
#include "settings/SettingsWriteLogic.h"

#include <QCoreApplication>
#include <QSet>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr qsizetype titleLength = 200;
constexpr qsizetype notesLength = 300;
constexpr qsizetype entryLength = 100;
constexpr qsizetype wholeEntryLength = 1'050;
constexpr qsizetype valueLength = 300;
constexpr qsizetype mostEntries = 20;
constexpr qsizetype mostOutcomeLines = 2;
/// Long enough for a whole note and the words around it.
constexpr qsizetype forgetLength = 1'050;
/// A longer text is easier to read on several lines.
constexpr qsizetype oneLineLength = 100;

using Lines = QStringList;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ProposalTexts)
};

bool isRightToLeft(QChar character)
{
    return character.direction() == QChar::DirR || character.direction() == QChar::DirAL;
}

/// Fits a text into one of our lines without changing the line's direction.
QString embedded(const QString& text, qsizetype length)
{
    const auto line = Text::plainLine(text, length);
    return std::ranges::any_of(line, isRightToLeft) ? QChar(0x2068) + line + QChar(0x2069) : line;
}

QString titled(const QString& text)
{
    const auto title = Text::plainLine(text, titleLength);
    return title.isEmpty() ? Texts::tr("Untitled") : title;
}

QString listed(const QStringList& entries)
{
    QStringList shown;
    for (const auto& entry : entries.first(std::min(entries.size(), mostEntries)))
        shown.append(embedded(entry, entryLength));
    const auto rest = entries.size() - shown.size();
    const auto list = shown.join(QStringLiteral(", "));
    return rest > 0 ? Texts::tr("%1 and %n more", nullptr, int(rest)).arg(list) : list;
}

/// Adds a line only if there is a text.
void add(Lines& lines, const QString& label, const QString& text)
{
    if (!text.isEmpty())
        lines.append(QStringLiteral("%1: %2").arg(label, text));
}

/// Adds a line for each entry.
void addEach(Lines& lines, const QString& label, const QStringList& entries)
{
    for (const auto& entry : entries)
        add(lines, label, embedded(entry, wholeEntryLength));
}

QString span(const ProposedCalendarEvent& event, const Calendar& calendar)
{
    auto text = ProposalTexts::when(event.start, event.allDay, calendar);
    const auto isSameDay = event.end && calendar.day(*event.end) == calendar.day(event.start);
    if (!event.end || (event.allDay && isSameDay))
        return text;
    const auto time = calendar.dateTime(*event.end).time();
    return text + QStringLiteral(" – ")
        + (isSameDay ? calendar.locale.toString(time, QLocale::ShortFormat)
                     : ProposalTexts::when(*event.end, event.allDay, calendar));
}

QString notes(const std::optional<QString>& text)
{
    return embedded(text.value_or(QString()), notesLength);
}

Lines eventLines(const ProposedCalendarEvent& event, const Calendar& calendar)
{
    Lines lines { titled(event.title), span(event, calendar) };
    add(lines, Texts::tr("Calendar"),
        embedded(event.calendarName.value_or(QString()), entryLength));
    add(lines, Texts::tr("Notes"), notes(event.notes));
    return lines;
}

Lines reminderLines(const ProposedReminder& reminder, const Calendar& calendar)
{
    const auto due = reminder.due ? ProposalTexts::when(*reminder.due, reminder.allDay, calendar)
                                  : Texts::tr("at no particular time");
    Lines lines { titled(reminder.title) };
    add(lines, Texts::tr("Due"), due);
    add(lines, Texts::tr("Notes"), notes(reminder.notes));
    return lines;
}

QStringList without(QStringList entries, const QStringList& others)
{
    const QSet<QString> known(others.begin(), others.end());
    entries.removeIf([&known](const auto& entry) { return known.contains(entry); });
    return entries;
}

/// Whether each entry of the list has a line of its own, so that none hides behind another.
bool isAlwaysWhole(const Setting& setting)
{
    return setting.alwaysAsks == AlwaysAsks::all
        && std::holds_alternative<ListSetting>(setting.kind);
}

/// Describes the change from one value of a setting to another.
Lines change(const Setting& setting, const AppSettings& before, const AppSettings& after)
{
    const auto label = SettingTexts::label(setting);
    const auto line = QStringLiteral("%1: %2 → %3")
                          .arg(label, embedded(SettingTexts::value(setting, before), valueLength),
                              embedded(SettingTexts::value(setting, after), valueLength));
    const auto old = SettingTexts::entries(setting, before);
    const auto now = SettingTexts::entries(setting, after);
    const auto isShort = line.size() <= oneLineLength || (old.isEmpty() && now.isEmpty());
    if (isShort && !isAlwaysWhole(setting))
        return { line };
    Lines lines { QStringLiteral("%1: %2 → %3").arg(label).arg(old.size()).arg(now.size()) };
    const auto added = without(now, old);
    const auto removed = without(old, now);
    if (isAlwaysWhole(setting)) {
        addEach(lines, Texts::tr("Added"), added);
        addEach(lines, Texts::tr("Removed"), removed);
    } else {
        add(lines, Texts::tr("Added"), listed(added));
        add(lines, Texts::tr("Removed"), listed(removed));
    }
    return lines;
}

/// The settings after the change, or nothing if it cannot be made.
std::optional<AppSettings> changed(
    const ProposedSettingsChange& proposed, const AppSettings& before)
{
    const auto* setting = SettingsWriteLogic::allowed(proposed.key);
    auto after = before;
    if (setting && SettingsWriteLogic::write(*setting, proposed.value, after))
        return after;
    return std::nullopt;
}

Lines impossible(const ProposedSettingsChange& proposed)
{
    const auto* setting = SettingsWriteLogic::allowed(proposed.key);
    const auto label = setting ? SettingTexts::label(*setting) : proposed.key;
    return { Texts::tr("%1 cannot be set to %2")
                 .arg(embedded(label, entryLength),
                     embedded(proposed.value.displayString(), valueLength)) };
}

/// The changes of the setting and of those that follow it.
Lines changes(const QString& key, const AppSettings& before, const AppSettings& after)
{
    const auto* const setting = SettingCatalog::find(key);
    auto lines = change(*setting, before, after);
    // A new mascot, for example, can change the colours as well.
    for (const auto& other : SettingCatalog::all()) {
        const auto changes =
            SettingTexts::value(other, before) != SettingTexts::value(other, after);
        if (changes && &other != setting)
            lines += change(other, before, after);
    }
    return lines;
}

Lines settingLines(const ProposedSettingsChange& proposed, const AppSettings& before)
{
    const auto after = changed(proposed, before);
    return after ? FolderWarnings::warnings(before, *after) + changes(proposed.key, before, *after)
                 : impossible(proposed);
}

/// The value alone if it is not known what it was before.
Lines settingOutcome(const RuleProposal& proposal, const AppSettings& settings)
{
    const auto& proposed = *proposal.settingsChange;
    const auto before =
        proposal.replaced ? SettingsDifference::restored(settings, *proposal.replaced) : settings;
    const auto after = changed(proposed, before);
    if (!after)
        return impossible(proposed);
    if (proposal.replaced)
        return changes(proposed.key, before, *after);
    const auto* const setting = SettingCatalog::find(proposed.key);
    return { QStringLiteral("%1: %2").arg(SettingTexts::label(*setting),
        embedded(SettingTexts::value(*setting, *after), valueLength)) };
}

QString minutesInWords(int minutes)
{
    return minutes == 1 ? Texts::tr("1 minute") : Texts::tr("%n minutes", nullptr, minutes);
}

Lines ruleLines(const RuleProposal& rule)
{
    QStringList watched;
    for (const auto* const names :
        { &rule.applicationMatch, &rule.domainMatch, &rule.bundleIDMatch })
        watched.append({ names->begin(), names->end() });
    // An empty name matches every application.
    std::ranges::replace(watched, QString(), Texts::tr("any app"));
    const auto isLong = watched.size() > mostEntries;
    QStringList silent;
    for (const auto mode : rule.excludedModes)
        silent.append(displayName(mode));
    Lines lines { titled(rule.name) };
    lines.append(watched.isEmpty() ? Texts::tr("Watches nothing")
                                   : Texts::tr("Checks in after %1 of %2")
                                         .arg(minutesInWords(rule.thresholdMinutes),
                                             isLong ? Texts::tr("any of these") : listed(watched)));
    if (isLong)
        addEach(lines, Texts::tr("Watches"), watched);
    lines.append(
        Texts::tr("At most every %1, in a %2 tone")
            .arg(minutesInWords(rule.cooldownMinutes), EnumNames::text(rule.responseStyle)));
    add(lines, Texts::tr("Silent in the modes"), silent.join(QStringLiteral(", ")));
    return lines;
}

Lines bounded(const Lines& lines)
{
    return lines.first(std::min(lines.size(), mostOutcomeLines));
}

QString title(RuleProposal::Kind kind)
{
    switch (kind) {
    case RuleProposal::Kind::rule:
        return Texts::tr("New check-in rule");
    case RuleProposal::Kind::calendarEvent:
        return Texts::tr("New calendar event");
    case RuleProposal::Kind::reminder:
        return Texts::tr("New reminder");
    case RuleProposal::Kind::settingsChange:
        return Texts::tr("Change a setting");
    case RuleProposal::Kind::forgetMemory:
        return Texts::tr("Forget from memory");
    }
    Q_UNREACHABLE();
}

/// Empty if the kind's own part is missing.
Lines lines(const RuleProposal& proposal, const AppSettings& settings, const Calendar& calendar)
{
    switch (proposal.kind) {
    case RuleProposal::Kind::rule:
        return ruleLines(proposal);
    case RuleProposal::Kind::calendarEvent:
        return proposal.event ? eventLines(*proposal.event, calendar) : Lines();
    case RuleProposal::Kind::reminder:
        return proposal.reminder ? reminderLines(*proposal.reminder, calendar) : Lines();
    case RuleProposal::Kind::settingsChange:
        return proposal.settingsChange ? settingLines(*proposal.settingsChange, settings) : Lines();
    case RuleProposal::Kind::forgetMemory:
        return { Text::plainLine(proposal.name, forgetLength),
            Texts::tr("This cannot be undone.") };
    }
    Q_UNREACHABLE();
}

} // namespace

ProposalWords ProposalTexts::words(
    const RuleProposal& proposal, const AppSettings& settings, const Calendar& calendar)
{
    ProposalWords words { .title = title(proposal.kind),
        .lines = lines(proposal, settings, calendar),
        .isInFull = proposal.kind != RuleProposal::Kind::forgetMemory
            && !ProposalLogic::canAllowAlways(proposal) };
    if (words.lines.isEmpty())
        words.lines.append(name(proposal));
    return words;
}

QStringList ProposalTexts::outcome(
    const RuleProposal& proposal, const AppSettings& settings, const Calendar& calendar)
{
    if (proposal.name.isEmpty())
        return {};
    if (proposal.settingsChange)
        return bounded(settingOutcome(proposal, settings));
    auto told = words(proposal, settings, calendar).lines;
    told.front() = QStringLiteral("%1: %2").arg(title(proposal.kind), told.front());
    return bounded(told);
}

QString ProposalTexts::when(TimePoint time, bool isDay, const Calendar& calendar)
{
    return isDay ? calendar.locale.toString(calendar.day(time), QLocale::LongFormat)
                 : calendar.moment(time);
}

QString ProposalTexts::name(const RuleProposal& proposal)
{
    return titled(proposal.name);
}

QString ProposalTexts::allowAlways(const RuleProposal& proposal)
{
    if (!ProposalLogic::canAllowAlways(proposal))
        return {};
    switch (proposal.kind) {
    case RuleProposal::Kind::calendarEvent:
        return Texts::tr("Allow always for calendar events");
    case RuleProposal::Kind::reminder:
        return Texts::tr("Allow always for reminders");
    case RuleProposal::Kind::settingsChange:
        return Texts::tr("Allow always for ordinary settings");
    case RuleProposal::Kind::rule:
    case RuleProposal::Kind::forgetMemory:
        break;
    }
    return {};
}

} // namespace pobblewig
