#include "PobblewigDesktop/chat/ConversationModel.h"

#include "PobblewigDesktop/chat/ConversationLogic.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <tuple>

namespace pobblewig {

namespace {

/// What makes two rows the same: the message, or the day.
using Identity = std::tuple<QUuid, ConversationRow::Kind, QString>;

Identity identity(const ConversationRow& row)
{
    const auto isDay = row.kind == ConversationRow::Kind::day;
    return { row.id, row.kind, isDay ? row.text : QString() };
}

} // namespace

const ConversationRow& ConversationModel::row(int number) const
{
    return m_rows.at(static_cast<std::size_t>(number));
}

std::optional<int> ConversationModel::rowOf(const QUuid& messageID) const
{
    if (messageID.isNull())
        return m_hasReply ? std::optional(messageCount()) : std::nullopt;
    // The latest rows are asked for most.
    const auto found =
        std::ranges::find(m_rows.rbegin(), m_rows.rend(), messageID, &ConversationRow::id);
    if (found == m_rows.rend())
        return std::nullopt;
    return static_cast<int>(m_rows.rend() - found) - 1;
}

int ConversationModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ConversationModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::DisplayRole)
        return row(index.row()).text;
    if (role == Qt::AccessibleTextRole)
        return ConversationLogic::spoken(row(index.row()));
    return {};
}

void ConversationModel::setRows(std::vector<ConversationRow> rows, int from)
{
    removeMissing(rows, from);
    insertNew(rows, from);
}

void ConversationModel::removeMissing(const std::vector<ConversationRow>& wanted, int from)
{
    std::set<Identity> identities;
    std::ranges::transform(wanted, std::inserter(identities, identities.end()), identity);
    for (auto number = messageCount() - 1; number >= from; --number) {
        if (identities.contains(identity(row(number))))
            continue;
        beginRemoveRows({}, number, number);
        m_rows.erase(m_rows.begin() + number);
        endRemoveRows();
    }
}

void ConversationModel::insertNew(std::vector<ConversationRow>& wanted, int from)
{
    auto number = from;
    for (auto& next : wanted) {
        if (number == messageCount() && endsReply(next)) {
            m_rows.back() = std::move(next);
            m_hasReply = false;
            announceChange(number);
        } else if (number == messageCount() || !row(number).isSameAs(next)) {
            beginInsertRows({}, number, number);
            m_rows.insert(m_rows.begin() + number, std::move(next));
            endInsertRows();
        } else if (row(number) != next) {
            m_rows[static_cast<std::size_t>(number)] = std::move(next);
            announceChange(number);
        }
        ++number;
    }
    if (number == messageCount())
        return;
    // Left over where the order changed.
    beginRemoveRows({}, number, messageCount() - 1);
    m_rows.erase(m_rows.begin() + number, m_rows.begin() + messageCount());
    endRemoveRows();
}

bool ConversationModel::endsReply(const ConversationRow& next) const
{
    return m_hasReply && m_rows.back().kind == ConversationRow::Kind::preview
        && next.kind == ConversationRow::Kind::assistant;
}

void ConversationModel::setReply(const std::optional<ConversationRow>& reply)
{
    const auto last = messageCount();
    if (reply && m_hasReply) {
        if (std::exchange(m_rows.back(), *reply) != *reply)
            announceChange(last);
    } else if (reply) {
        beginInsertRows({}, last, last);
        m_rows.push_back(*reply);
        m_hasReply = true;
        endInsertRows();
    } else if (m_hasReply) {
        beginRemoveRows({}, last, last);
        m_rows.pop_back();
        m_hasReply = false;
        endRemoveRows();
    }
}

void ConversationModel::setReplyText(QStringView text)
{
    if (!m_hasReply)
        return;
    auto& shown = m_rows.back().text;
    if (shown == text)
        return;
    if (text.startsWith(shown))
        shown.append(text.sliced(shown.size()));
    else
        shown = text.toString();
    announceChange(messageCount());
}

void ConversationModel::announceChange(int number)
{
    Q_EMIT dataChanged(index(number), index(number));
}

} // namespace pobblewig
