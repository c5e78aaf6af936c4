#include "foundation/ISO8601.h"

#include <algorithm>

namespace pobblewig {

using namespace std::chrono;

namespace {

constexpr auto earliest = sys_days(year(0) / January / 1);
constexpr auto latest = sys_days(year(9999) / December / 31) + days(1) - seconds(1);
constexpr QStringView pattern = u"dddd-dd-ddTdd:dd:ddZ";
constexpr QStringView blank = u"0000-00-00T00:00:00Z";

void putNumber(QString& text, qsizetype at, qsizetype digits, int number)
{
    for (auto place = at + digits - 1; place >= at; --place, number /= 10)
        text[place] = QChar(u'0' + number % 10);
}

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
    QString text = blank.toString();
    putNumber(text, 0, 4, int(date.year()));
    putNumber(text, 5, 2, int(unsigned(date.month())));
    putNumber(text, 8, 2, int(unsigned(date.day())));
    putNumber(text, 11, 2, int(clock.hours().count()));
    putNumber(text, 14, 2, int(clock.minutes().count()));
    putNumber(text, 17, 2, int(clock.seconds().count()));
    return text;
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
