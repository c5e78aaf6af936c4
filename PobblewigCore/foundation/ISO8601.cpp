#include "foundation/ISO8601.h"

#include <algorithm>

namespace pobblewig {

using namespace std::chrono;

namespace {

constexpr auto earliest = sys_days(year(0) / January / 1);
constexpr auto latest = sys_days(year(9999) / December / 31) + days(1) - seconds(1);
constexpr QStringView pattern = u"dddd-dd-ddTdd:dd:ddZ";

bool matchesPattern(QStringView text)
{
    return std::ranges::equal(text, pattern, [](QChar found, QChar wanted) {
        return wanted == u'd' ? found >= u'0' && found <= u'9' : found == wanted;
    });
}

} // namespace

QString ISO8601::format(TimePoint time)
{
    const auto second = std::clamp<sys_seconds>(floor<seconds>(time), earliest, latest);
    const auto day = floor<days>(second);
    const year_month_day date(day);
    const hh_mm_ss clock(second - day);
    return QString::asprintf("%04d-%02u-%02uT%02d:%02d:%02dZ", int(date.year()),
        unsigned(date.month()), unsigned(date.day()), int(clock.hours().count()),
        int(clock.minutes().count()), int(clock.seconds().count()));
}

std::optional<TimePoint> ISO8601::parse(QStringView text)
{
    if (!matchesPattern(text))
        return std::nullopt;
    const auto number = [&](int at, int length) { return text.mid(at, length).toInt(); };
    const year_month_day date(
        year(number(0, 4)), month(unsigned(number(5, 2))), day(unsigned(number(8, 2))));
    const auto hour = number(11, 2);
    const auto minute = number(14, 2);
    const auto second = number(17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

} // namespace pobblewig
