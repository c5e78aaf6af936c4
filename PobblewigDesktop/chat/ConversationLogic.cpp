#include "PobblewigDesktop/chat/ConversationLogic.h"

#include "PobblewigDesktop/chat/ProposalCardLogic.h"
#include "conversation/attachments/AttachmentLogic.h"
#include "markdown/MarkdownReader.h"

#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>
#include <map>
#include <ranges>
#include <utility>

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

/// Null if the message stands for itself.
const ProposalCard* cardOf(const ChatMessage& message, const ProposalCards& cards)
{
    const auto found = message.proposalID ? cards.find(*message.proposalID) : cards.end();
    return found == cards.end() ? nullptr : &found->second;
}

/// Where each proposal is mentioned first.
std::map<QUuid, size_t> firstMentions(const std::vector<ChatMessage>& messages)
{
    std::map<QUuid, size_t> first;
    for (size_t number = 0; number < messages.size(); ++number) {
        if (const auto& id = messages[number].proposalID)
            first.try_emplace(*id, number);
    }
    return first;
}

/// Puts messages into rows.
class RowWriter {
public:
    RowWriter(TimePoint now, const Calendar& calendar, const ChatMessage* previous)
        : m_calendar(calendar)
        , m_today(calendar.dateTime(now).date())
        , m_shownDay(previous ? calendar.dateTime(previous->timestamp).date() : QDate())
    {
    }

    std::vector<ConversationRow> rows() { return std::move(m_rows); }

    void add(const ChatMessage& message, ConversationRow::Kind kind)
    {
        addDay(message.timestamp);
        m_rows.push_back({ .kind = kind,
            .id = message.id,
            .text = message.text,
            .timestamp = message.timestamp,
            .time = time(message.timestamp),
            .hadImage = message.hadImage && !AttachmentLogic::hasLine(message.text),
            .isCutOff = message.isCutOff(),
            .isStopped = message.isStopped(),
            .earlier = message.earlierTexts(),
            .answer = message.earlierTexts().size() });
    }

    void addToCard(const ChatMessage& message, const ProposalCard& card)
    {
        if (card.outcome == ProposalCard::Outcome::waiting)
            return;
        const auto known = std::ranges::find_if(m_rows, [&](const auto& row) {
            return row.kind == ConversationRow::Kind::card
                && row.card.proposalId == card.proposalId;
        });
        if (known == m_rows.end())
            addCard(message, card);
        else if (card.text.isEmpty())
            known->text = message.text;
    }

private:
    void addDay(TimePoint moment)
    {
        const auto day = m_calendar.dateTime(moment).date();
        if (std::exchange(m_shownDay, day) == day)
            return;
        m_rows.push_back({ .kind = ConversationRow::Kind::day,
            .text = ConversationLogic::dayTitle(day, m_today, m_calendar.locale) });
    }

    void addCard(const ChatMessage& message, const ProposalCard& card)
    {
        addDay(message.timestamp);
        const auto isJoined = !m_rows.empty() && m_rows.back().kind == ConversationRow::Kind::card;
        if (isJoined)
            m_rows.back().isLastOfCard = false;
        m_rows.push_back({ .kind = ConversationRow::Kind::card,
            .id = message.id,
            .text = card.text.isEmpty() ? message.text : card.text,
            .timestamp = message.timestamp,
            .time = time(card.time),
            .card = card,
            .isFirstOfCard = !isJoined });
    }

    QString time(TimePoint moment) const
    {
        return m_calendar.locale.toString(m_calendar.dateTime(moment).time(), QLocale::ShortFormat);
    }

    const Calendar& m_calendar;
    QDate m_today;
    QDate m_shownDay;
    std::vector<ConversationRow> m_rows;
};

/// The text without its markup.
QString words(const ConversationRow& row)
{
    using enum ConversationRow::Kind;
    if (row.kind == user || row.kind == note || row.kind == card)
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

std::vector<ConversationRow> ConversationLogic::rows(const std::vector<ChatMessage>& messages,
    TimePoint now, const Calendar& calendar, const ProposalCards& cards, size_t first)
{
    const auto* previous = first > 0 ? &messages[first - 1] : nullptr;
    RowWriter writer(now, calendar, previous);
    for (const auto& message : messages | std::views::drop(first)) {
        if (const auto* const card = cardOf(message, cards))
            writer.addToCard(message, *card);
        else
            writer.add(message, kindOf(message, previous));
        previous = &message;
    }
    return writer.rows();
}

size_t ConversationLogic::firstToShow(const std::vector<ChatMessage>& messages, size_t changed)
{
    const auto firstOf = firstMentions(messages);
    for (auto first = changed;;) {
        auto begin = first;
        for (const auto& message : messages | std::views::drop(first)) {
            if (message.proposalID)
                begin = std::min(begin, firstOf.at(*message.proposalID));
        }
        while (begin > 0 && messages[begin - 1].proposalID)
            --begin;
        if (begin == first)
            return first;
        first = begin;
    }
}

QString ConversationLogic::spoken(const ConversationRow& row)
{
    const auto text = words(row);
    switch (row.kind) {
    case ConversationRow::Kind::day:
        return row.text;
    case ConversationRow::Kind::note:
        return Texts::tr("Note, %1: %2").arg(row.time, text);
    case ConversationRow::Kind::card:
        return QStringLiteral("%1, %2: %3")
            .arg(ProposalCardLogic::name(row.card.outcome), row.time, text);
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
