#include "connections/canvas/CanvasDateParser.h"

#include "foundation/ISO8601.h"

namespace pobblewig {

std::optional<TimePoint> CanvasDateParser::parse(const std::optional<QString>& text)
{
    return text ? ISO8601::instant(*text) : std::nullopt;
}

QString CanvasDateParser::string(TimePoint time)
{
    return ISO8601::format(time);
}

} // namespace pobblewig
