#include "PobblewigDesktop/chat/RegionLogic.h"

#include <algorithm>

namespace pobblewig {

namespace {

QSize clamped(QSize size, QSize picture)
{
    return size.expandedTo({ RegionLogic::least, RegionLogic::least }).boundedTo(picture);
}

/// As near to this place as the picture allows.
QRect placed(QPoint corner, QSize size, QSize picture)
{
    return { QPoint(std::clamp(corner.x(), 0, picture.width() - size.width()),
                 std::clamp(corner.y(), 0, picture.height() - size.height())),
        size };
}

} // namespace

QRect RegionLogic::initial(QSize picture)
{
    const auto size = clamped(picture / 2, picture);
    const auto rest = picture - size;
    return placed({ rest.width() / 2, rest.height() / 2 }, size, picture);
}

QRect RegionLogic::drawn(QPoint from, QPoint to, QSize picture)
{
    const auto between = QRect(from, to).normalized() & QRect({}, picture);
    return placed(between.topLeft(), clamped(between.size(), picture), picture);
}

QRect RegionLogic::moved(const QRect& region, QPoint by, QSize picture)
{
    return placed(region.topLeft() + by, region.size(), picture);
}

QRect RegionLogic::sized(const QRect& region, QPoint by, QSize picture)
{
    const auto offset = region.topLeft();
    const auto room = picture - QSize(offset.x(), offset.y());
    const auto size = region.size() + QSize(by.x(), by.y());
    return placed(offset, clamped(size.boundedTo(room), picture), picture);
}

} // namespace pobblewig
