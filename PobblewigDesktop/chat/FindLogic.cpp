#include "PobblewigDesktop/chat/FindLogic.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool isSearched(const ConversationRow& row)
{
    return row.isMessage();
}

} // namespace

std::vector<MessageRange> FindLogic::matches(
    const std::vector<ConversationRow>& rows, const QString& wanted, const ShownText& shownText)
{
    std::vector<MessageRange> found;
    if (wanted.isEmpty())
        return found;
    for (const auto& row : rows) {
        if (!isSearched(row))
            continue;
        const auto text = shownText(row);
        auto start = text.indexOf(wanted, 0, Qt::CaseInsensitive);
        for (; start >= 0; start = text.indexOf(wanted, start, Qt::CaseInsensitive)) {
            found.push_back({ row.id, { start, wanted.size() } });
            start += wanted.size();
        }
    }
    return found;
}

std::optional<std::size_t> FindLogic::neighbour(
    const std::vector<MessageRange>& matches, const std::optional<MessageRange>& current, int step)
{
    if (matches.empty())
        return std::nullopt;
    const auto count = std::ssize(matches);
    const auto at = current ? std::ranges::find(matches, *current) : matches.end();
    if (at == matches.end())
        return static_cast<std::size_t>(count - 1);
    return static_cast<std::size_t>((at - matches.begin() + step + count) % count);
}

} // namespace pobblewig
