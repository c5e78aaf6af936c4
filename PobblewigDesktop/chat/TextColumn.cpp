#include "PobblewigDesktop/chat/TextColumn.h"

#include <QFontMetrics>

namespace pobblewig {

int TextColumn::longest(const QFontMetrics& metrics)
{
    constexpr int characters = 62;
    constexpr int bubblePadding = 12;
    return characters * metrics.averageCharWidth() + 2 * bubblePadding;
}

} // namespace pobblewig
