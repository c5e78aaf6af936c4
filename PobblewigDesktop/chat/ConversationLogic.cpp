#include "PobblewigDesktop/chat/ConversationLogic.h"

#include "markdown/MarkdownReader.h"

#include <QCoreApplication>
#include <QDateTime>

#include <ranges>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ConversationLogic)
};

bool isAsked(const ChatMessage* previous)
{
    return previous == nullptr || previous->role == ChatMessage::Role::user;
}

ConversationRow::Kind kindOf(const ChatMessage& message, const ChatMessage* previous)
{
    using enum ConversationRow::Kind;
    if (message.role == ChatMessage::Role::user)
        return user;
    if (message.relatedInterventionID)
        return proactive;
    return message.role == ChatMessage::Role::assistant && isAsked(previous) ? assistant : note;
}

QString speaker(ConversationRow::Kind kind)
{
    return kind == ConversationRow::Kind::user ? Texts::tr("You") : QStringLiteral("Pobblewig");
}

/// The text without its markup.
QString words(const ConversationRow& row)
{
    const auto isPlain =
        row.kind == ConversationRow::Kind::user || row.kind == ConversationRow::Kind::note;
    if (isPlain)
        return row.text;
    const auto shown = MarkdownReader::read(row.text);
    return shown.copied({ 0, shown.text.size() });
}

} // namespace

QString ConversationLogic::dayTitle(const QDate& day, const QDate& today, const QLocale& locale)
{
    const auto age = day.daysTo(today);
    if (age == 0)
        return Texts::tr("Today");
    if (age == 1)
        return Texts::tr("Yesterday");
    if (age > 1 && age < 7)
        return locale.standaloneDayName(day.dayOfWeek());
    return locale.toString(day, QLocale::LongFormat);
}

std::vector<ConversationRow> ConversationLogic::rows(
    const std::vector<ChatMessage>& messages, TimePoint now, const Calendar& calendar, size_t first)
{
    const auto today = calendar.dateTime(now).date();
    std::vector<ConversationRow> rows;
    const auto* previous = first > 0 ? &messages[first - 1] : nullptr;
    auto shownDay = previous ? calendar.dateTime(previous->timestamp).date() : QDate();
    for (const auto& message : messages | std::views::drop(first)) {
        const auto moment = calendar.dateTime(message.timestamp);
        if (moment.date() != shownDay) {
            shownDay = moment.date();
            rows.push_back({ .kind = ConversationRow::Kind::day,
                .text = dayTitle(shownDay, today, calendar.locale) });
        }
        rows.push_back({ .kind = kindOf(message, previous),
            .id = message.id,
            .text = message.text,
            .timestamp = message.timestamp,
            .time = calendar.locale.toString(moment.time(), QLocale::ShortFormat),
            .hadImage = message.hadImage,
            .isCutOff = message.isCutOff(),
            .isStopped = message.isStopped(),
            .earlier = message.earlierTexts(),
            .answer = message.earlierTexts().size() });
        previous = &message;
    }
    return rows;
}

QString ConversationLogic::spoken(const ConversationRow& row)
{
    const auto text = words(row);
    switch (row.kind) {
    case ConversationRow::Kind::day:
        return row.text;
    case ConversationRow::Kind::note:
        return Texts::tr("Note, %1: %2").arg(row.time, text);
    case ConversationRow::Kind::preview:
        return Texts::tr("Pobblewig is writing: %1").arg(text);
    default:
        break;
    }
    if (row.isCutOff)
        return Texts::tr("%1, %2, cut off: %3").arg(speaker(row.kind), moment(row), text);
    if (row.isStopped)
        return Texts::tr("%1, %2, stopped: %3").arg(speaker(row.kind), moment(row), text);
    if (row.isUnanswered)
        return Texts::tr("%1, %2, not answered: %3").arg(speaker(row.kind), moment(row), text);
    const auto line = row.hadImage ? Texts::tr("%1, %2, with a picture of the screen: %3")
                                   : Texts::tr("%1, %2: %3");
    return line.arg(speaker(row.kind), moment(row), text);
}

QString ConversationLogic::moment(const ConversationRow& row)
{
    if (row.earlier.empty())
        return row.time;
    return Texts::tr("%1, answer %2 of %3")
        .arg(row.time, QString::number(row.answer + 1), QString::number(row.earlier.size() + 1));
}

ConversationRow ConversationLogic::withAnswer(ConversationRow row, std::size_t number)
{
    if (number >= row.earlier.size())
        return row;
    row.answer = number;
    row.text = row.earlier[number];
    // How the others ended is not kept.
    row.isCutOff = false;
    row.isStopped = false;
    return row;
}

QString ConversationLogic::transcript(
    const std::vector<ChatMessage>& messages, const Calendar& calendar)
{
    QString text;
    QDate shownDay;
    for (const auto& message : messages) {
        const auto moment = calendar.dateTime(message.timestamp);
        if (moment.date() != shownDay) {
            shownDay = moment.date();
            text +=
                calendar.locale.toString(shownDay, QLocale::LongFormat) + QStringLiteral("\n\n");
        }
        text +=
            QStringLiteral("%1, %2\n%3\n\n")
                .arg(speaker(kindOf(message, nullptr)),
                    calendar.locale.toString(moment.time(), QLocale::ShortFormat), message.text);
    }
    return text;
}

} // namespace pobblewig
