#include "connections/DatedItems.h"

#include "foundation/ISO8601.h"

#include <algorithm>
#include <span>

namespace pobblewig {

std::optional<TimePoint> DatedItems::date(const ReferenceItem& item, QStringView key)
{
    const auto found = item.details.find(QString::fromRawData(key.data(), key.size()));
    const auto* text = found == item.details.end() ? nullptr : found->second.string();
    if (!text)
        return std::nullopt;
    // Our own form is read much faster than any.
    const auto plain = ISO8601::parse(*text);
    return plain ? plain : ISO8601::instant(*text);
}

std::vector<ReferenceItem> DatedItems::within(
    const std::vector<ReferenceItem>& items, const Window& window)
{
    using Dated = std::pair<TimePoint, const ReferenceItem*>;
    std::vector<Dated> found;
    for (const auto& item : items) {
        const auto when = item.path == window.path ? date(item, window.key) : std::nullopt;
        if (when && *when > window.from && *when <= window.to)
            found.emplace_back(*when, &item);
    }
    std::ranges::stable_sort(found, {}, &Dated::first);
    const auto count = std::min(found.size(), size_t(std::max(window.limit, 0)));
    std::vector<ReferenceItem> soonest;
    soonest.reserve(count);
    for (const auto& [when, item] : std::span(found).first(count))
        soonest.push_back(*item);
    return soonest;
}

} // namespace pobblewig
