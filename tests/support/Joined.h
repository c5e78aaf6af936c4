#pragma once

#include <QStringList>

#include <functional>

namespace pobblewig {

/// One text of each, with bars between, as `joined(notes, &MemoryNote::text)`.
template <typename Range, typename Projection = std::identity>
QString joined(const Range& range, Projection projection = {})
{
    QStringList texts;
    for (const auto& each : range)
        texts.append(std::invoke(projection, each));
    return texts.join(u'|');
}

} // namespace pobblewig
