#include "memory/librarian/LibrarianLogic.h"

#include "foundation/ISO8601.h"
#include "foundation/Text.h"
#include "memory/SessionBoundary.h"

#include <QSet>
#include <QStringBuilder>
#include <QStringList>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr qsizetype longestMessage = 4000;

bool isSpoken(const ChatMessage& message)
{
    return message.role != ChatMessage::Role::system;
}

bool isForTheLibrarian(const ChatMessage& message)
{
    return isSpoken(message) && message.sessionID;
}

// Kept on one line, so that a text which imitates this format cannot pass for another's message.
QString stamped(TimePoint time, const QString& text)
{
    return u'[' % ISO8601::format(time) % u"] " % Text::onOneLine(text);
}

QString line(const ChatMessage& message)
{
    return stamped(message.timestamp,
        EnumNames::text(message.role) % u": "
            % Text::firstCharacters(message.text, longestMessage));
}

QString line(const DatedObservation& observation)
{
    return stamped(observation.occurredAt, observation.summary);
}

QString joined(const std::vector<QString>& texts)
{
    return QStringList(texts.begin(), texts.end()).join(QStringLiteral("; "));
}

QString paragraph(const PeriodSummary& daily, const Calendar& calendar)
{
    QString text = SessionBoundary::dayKey(daily.startDate, calendar) % u'\n' % daily.summary;
    if (!daily.chronologicalHighlights.empty())
        text += u"\nhighlights: " % joined(daily.chronologicalHighlights);
    if (!daily.unresolvedIntent.empty())
        text += u"\nunresolved: " % joined(daily.unresolvedIntent);
    return text;
}

/// Unfinished items are passed on from day to day; each is listed once.
void gather(std::vector<QString>& gathered, const std::vector<QString>& texts, QSet<QString>& known)
{
    for (const auto& text : texts) {
        const auto statement = Text::normalized(text);
        if (!known.contains(statement))
            gathered.push_back(text);
        known.insert(statement);
    }
}

} // namespace

QString LibrarianLogic::windowText(const std::vector<ChatMessage>& messages)
{
    QStringList lines;
    for (const auto& message : messages) {
        if (isForTheLibrarian(message))
            lines.append(line(message));
    }
    return lines.join(u'\n');
}

QString LibrarianLogic::observationsText(const std::vector<DatedObservation>& observations)
{
    QStringList lines;
    for (const auto& observation : observations)
        lines.append(line(observation));
    return lines.join(u'\n');
}

QString LibrarianLogic::dailiesText(
    const std::vector<PeriodSummary>& dailies, const Calendar& calendar)
{
    QStringList paragraphs;
    for (const auto& daily : dailies)
        paragraphs.append(paragraph(daily, calendar));
    return paragraphs.join(QStringLiteral("\n\n"));
}

std::vector<ChatMessage> LibrarianLogic::messagesAfter(
    const std::vector<ChatMessage>& messages, const std::optional<QUuid>& lastExtractedMessageID)
{
    if (!lastExtractedMessageID)
        return messages;
    const auto last = std::ranges::find(messages, *lastExtractedMessageID, &ChatMessage::id);
    if (last == messages.end())
        return messages;
    return { std::next(last), messages.end() };
}

bool LibrarianLogic::hasReadableUserMessage(const std::vector<ChatMessage>& messages)
{
    return std::ranges::any_of(messages, [](const auto& message) {
        return message.role == ChatMessage::Role::user && message.sessionID;
    });
}

DailyCloseout LibrarianLogic::completed(DailyCloseout answer, DailyCloseout withoutModel)
{
    if (!answer.summary.isEmpty())
        return answer;
    answer.summary = std::move(withoutModel.summary);
    if (answer.highlights.empty())
        answer.highlights = std::move(withoutModel.highlights);
    if (answer.unfinishedIntent.empty())
        answer.unfinishedIntent = std::move(withoutModel.unfinishedIntent);
    return answer;
}

DailyCloseout LibrarianLogic::deterministicCloseout(const std::vector<ChatMessage>& window,
    const std::vector<DatedObservation>& observations, const std::vector<QString>& previousIntent)
{
    DailyCloseout closeout;
    closeout.summary = Text::counted(std::ranges::count_if(window, isSpoken), u"chat turn") % u", "
        % Text::counted(qint64(observations.size()), u"observation") % u" recorded.";
    if (!observations.empty())
        closeout.summary += u" First noted: " % observations.front().summary;
    for (const auto& observation : observations)
        closeout.highlights.push_back(line(observation));
    for (const auto& intent : previousIntent)
        closeout.unfinishedIntent.push_back({ .text = intent });
    return closeout;
}

WeeklyRollupResult LibrarianLogic::deterministicWeekly(
    const std::vector<PeriodSummary>& dailies, const Calendar& calendar)
{
    WeeklyRollupResult rollup;
    QStringList lines;
    QSet<QString> known;
    for (const auto& daily : dailies) {
        const auto day = SessionBoundary::dayKey(daily.startDate, calendar);
        lines.append(u'[' % day % u"] " % daily.summary);
        std::ranges::copy(daily.chronologicalHighlights, std::back_inserter(rollup.highlights));
        gather(rollup.unresolvedIntent, daily.unresolvedIntent, known);
    }
    rollup.summary = lines.join(u'\n');
    return rollup;
}

} // namespace pobblewig
