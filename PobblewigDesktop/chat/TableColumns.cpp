#include "PobblewigDesktop/chat/TableColumns.h"

#include <algorithm>
#include <numeric>

namespace pobblewig {

std::vector<qreal> TableColumns::widths(std::vector<qreal> wanted, qreal room)
{
    std::vector<std::size_t> narrowFirst(wanted.size());
    std::iota(narrowFirst.begin(), narrowFirst.end(), 0);
    std::ranges::sort(narrowFirst, {}, [&wanted](auto column) { return wanted[column]; });
    auto left = static_cast<qreal>(wanted.size());
    for (const auto column : narrowFirst) {
        wanted[column] = std::max(1.0, std::min(wanted[column], room / left));
        room -= wanted[column];
        --left;
    }
    return wanted;
}

} // namespace pobblewig
